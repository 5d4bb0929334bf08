#include "devhost/tour/dsp_places.h"

#include "devhost/tour/hands.h"

#include <QTableWidget>
#include <QWindow>

#include <limits>

namespace devhost::tour {

QVector<Block> blocks()
{
    return {
        {QStringLiteral("Bluetooth In"), QStringLiteral("bluetooth-in"), 0.088, 0.194},
        {QStringLiteral("Dante Network Rx"), QStringLiteral("dante-rx"), 0.09, 0.495},
        {QStringLiteral("USB Playback"), QStringLiteral("usb-playback"), 0.09, 0.839},
        {QStringLiteral("Matrix Mixer"), QStringLiteral("mixer"), 0.468, 0.499},
        {QStringLiteral("Bluetooth Out"), QStringLiteral("bluetooth-out"), 0.91, 0.194},
        {QStringLiteral("Dante Network Tx"), QStringLiteral("dante-tx"), 0.9085, 0.5015},
        {QStringLiteral("USB Record"), QStringLiteral("usb-record"), 0.91, 0.839},
    };
}

Block netRx()
{
    return blocks().at(1);
}

Block mixer()
{
    return blocks().at(3);
}

Block netTx()
{
    return blocks().at(5);
}

QPoint placeInScene(const Guide &guide, const Block &block)
{
    const QWindow *scene = guide.scene();
    return scene ? QPoint(int(scene->width() * block.x), int(scene->height() * block.y)) : QPoint();
}

Step openBlock(Guide &guide, const Block &block)
{
    Step step;
    step.name = QStringLiteral("open %1 from the diagram").arg(block.title);
    step.act = [&guide, block] { return hands::clickWindow(guide.scene(), placeInScene(guide, block)); };
    step.missing = [&guide, block] {
        return unless(guide.windowTitled(block.title), QStringLiteral("its window is not open"));
    };
    step.picture = block.picture;
    step.area = guide.titledArea(block.title);
    return step;
}

Step openAgain(Guide &guide, const Block &block)
{
    Step step = openBlock(guide, block);
    step.picture.clear();
    return step;
}

QWidget *faderOf(const Guide &guide, const Block &block, int channel)
{
    return partOf<QWidget>(guide, block, QStringLiteral("vmdspgain"), channel);
}

double meterOf(const QWidget *fader)
{
    if (fader) {
        for (const QWidget *part : fader->findChildren<QWidget *>()) {
            const QVariant level = part->property("dbValuePort1");
            if (level.isValid())
                return level.toDouble();
        }
    }
    return std::numeric_limits<double>::quiet_NaN();
}

QWidget *dialOf(const Guide &guide, int source, int sink)
{
    const auto *table = partOf<QTableWidget>(guide, mixer(), QStringLiteral("tableWidget"), 0);
    const QWidget *cell = table ? table->cellWidget(source + 1, sink + 1) : nullptr;
    return cell ? cell->findChild<QWidget *>(QStringLiteral("vmdial")) : nullptr;
}

} // namespace devhost::tour
