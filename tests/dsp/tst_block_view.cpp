#include "dsp/block_view.h"

#include <QGuiApplication>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickView>
#include <QTest>
#include <QVBoxLayout>
#include <QWidget>

/// Stands in for the editor window: remembers which block was clicked.
class Backend : public QObject
{
    Q_OBJECT

public:
    QStringList clicked;

public slots:
    void onBtInGainClicked() { clicked << QStringLiteral("BtIn"); }
    void onNetRxGainClicked() { clicked << QStringLiteral("NetRx"); }
    void onUsbInGainClicked() { clicked << QStringLiteral("UsbIn"); }
    void onMatrixMixerClicked() { clicked << QStringLiteral("Mixer"); }
    void onBtOutGainClicked() { clicked << QStringLiteral("BtOut"); }
    void onNetTxGainClicked() { clicked << QStringLiteral("NetTx"); }
    void onUsbOutGainClicked() { clicked << QStringLiteral("UsbOut"); }
};

/// The block view in a window: which block the mouse reaches where.
class BlockViewTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { qmlRegisterType<Backend>("TarnKBXBackEnd", 1, 0, "TarnKBXBackEnd"); }
    void clickReachesItsBlock_data();
    void clickReachesItsBlock();
};

void BlockViewTest::clickReachesItsBlock_data()
{
    QTest::addColumn<QString>("block");
    QTest::addColumn<QString>("item");
    QTest::addColumn<QRectF>("area"); // shares of the picture
    const auto add = [](const char *block, const char *item, qreal x, qreal y, qreal w, qreal h) {
        QTest::newRow(block) << QString::fromLatin1(block) << QString::fromLatin1(item) << QRectF(x, y, w, h);
    };
    add("BtIn", "btInGain", 0.008, 0.153, 0.16, 0.082);
    add("NetRx", "netRxGain", 0.01, 0.338, 0.16, 0.314);
    add("UsbIn", "usbInGain", 0.01, 0.798, 0.16, 0.082);
    add("Mixer", "matrixMixer", 0.428, 0.124, 0.08, 0.75);
    add("BtOut", "btOutGain", 0.83, 0.153, 0.16, 0.082);
    add("NetTx", "netTxGain", 0.828, 0.338, 0.161, 0.327);
    add("UsbOut", "usbOutGain", 0.83, 0.798, 0.16, 0.082);
}

void BlockViewTest::clickReachesItsBlock()
{
    QFETCH(QString, block);
    QFETCH(QString, item);
    QFETCH(QRectF, area);
    Backend backend;
    QWidget page;
    QVBoxLayout pageLayout(&page);
    pageLayout.setContentsMargins(0, 0, 0, 0);
    pageLayout.addWidget(createBlockView(&backend, &page));
    page.resize(900, 500);
    page.show();
    QVERIFY(QTest::qWaitForWindowExposed(&page));
    QQuickView *view = nullptr;
    for (QWindow *window : QGuiApplication::allWindows())
        view = view ? view : qobject_cast<QQuickView *>(window);
    QVERIFY(view);
    QCOMPARE(view->status(), QQuickView::Ready);
    QTRY_COMPARE(view->size(), QSize(900, 500));

    const auto at = [&area, view](qreal x, qreal y) {
        return QPointF((area.x() + area.width() * x) * view->width(),
                       (area.y() + area.height() * y) * view->height())
            .toPoint();
    };
    QObject *frame = view->rootObject()->property(qPrintable(item)).value<QObject *>();
    QVERIFY(frame);
    QTest::mouseMove(view, at(0.5, 0.5));
    QTRY_COMPARE(qvariant_cast<QObject *>(frame->property("border"))->property("width").toInt(), 4);
    QTest::mouseClick(view, Qt::LeftButton, {}, at(0.02, 0.05));
    QTest::mouseClick(view, Qt::LeftButton, {}, at(0.98, 0.95));
    QCOMPARE(backend.clicked, QStringList({block, block}));

    QTest::mouseMove(view, QPoint(view->width() / 4, 5));
    QTest::mouseClick(view, Qt::LeftButton, {}, QPoint(view->width() / 4, 5));
    QTRY_COMPARE(qvariant_cast<QObject *>(frame->property("border"))->property("width").toInt(), 0);
    QCOMPARE(backend.clicked.size(), 2);
}

QTEST_MAIN(BlockViewTest)
#include "tst_block_view.moc"
