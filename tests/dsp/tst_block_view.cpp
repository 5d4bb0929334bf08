#include "dsp/block_view.h"

#include <QQuickItem>
#include <QQuickView>
#include <QTest>
#include <QWidget>

// Qt Quick 5.15 never frees the last picture that it loaded. The sanitizer has to see whole stacks to tell.
extern "C" const char *__lsan_default_suppressions()
{
    return "leak:libQt5Quick.so\n";
}
extern "C" const char *__asan_default_options()
{
    return "fast_unwind_on_malloc=0";
}

/// Stands in for the editor window: remembers which block was clicked.
class Backend : public QObject
{
    Q_OBJECT

public:
    QByteArrayList clicked;

public slots:
    void onBtInGainClicked() { clicked << "btInGain"; }
    void onNetRxGainClicked() { clicked << "netRxGain"; }
    void onUsbInGainClicked() { clicked << "usbInGain"; }
    void onMatrixMixerClicked() { clicked << "matrixMixer"; }
    void onBtOutGainClicked() { clicked << "btOutGain"; }
    void onNetTxGainClicked() { clicked << "netTxGain"; }
    void onUsbOutGainClicked() { clicked << "usbOutGain"; }
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
    QTest::addColumn<QRectF>("area"); // shares of the picture
    QTest::newRow("btInGain") << QRectF(0.008, 0.153, 0.16, 0.082);
    QTest::newRow("netRxGain") << QRectF(0.01, 0.338, 0.16, 0.314);
    QTest::newRow("usbInGain") << QRectF(0.01, 0.798, 0.16, 0.082);
    QTest::newRow("matrixMixer") << QRectF(0.428, 0.124, 0.08, 0.75);
    QTest::newRow("btOutGain") << QRectF(0.83, 0.153, 0.16, 0.082);
    QTest::newRow("netTxGain") << QRectF(0.828, 0.338, 0.161, 0.327);
    QTest::newRow("usbOutGain") << QRectF(0.83, 0.798, 0.16, 0.082);
}

void BlockViewTest::clickReachesItsBlock()
{
    QFETCH(QRectF, area);
    const QByteArray block = QTest::currentDataTag();
    Backend backend;
    QWidget page;
    QWidget *container = createBlockView(&backend, &page);
    container->resize(900, 500);
    page.resize(900, 500);
    page.show();
    QVERIFY(QTest::qWaitForWindowExposed(&page));
    const auto windows = QGuiApplication::allWindows();
    const auto found
        = std::find_if(windows.begin(), windows.end(), [](auto *w) { return w->inherits("QQuickView"); });
    QVERIFY(found != windows.end());
    auto *view = static_cast<QQuickView *>(*found);
    QCOMPARE(view->status(), QQuickView::Ready);
    QTRY_COMPARE(view->size(), QSize(900, 500));

    const auto at = [&area](qreal x, qreal y) {
        return QPointF((area.x() + area.width() * x) * 900, (area.y() + area.height() * y) * 500).toPoint();
    };
    auto *frame = view->rootObject()->property(block).value<QObject *>();
    QVERIFY(frame);
    const auto frameWidth
        = [frame] { return frame->property("border").value<QObject *>()->property("width").toInt(); };
    QTest::mouseMove(view, at(0.5, 0.5));
    QTRY_COMPARE(frameWidth(), 4);
    QTest::mouseClick(view, Qt::LeftButton, {}, at(0.02, 0.05));
    QTest::mouseClick(view, Qt::LeftButton, {}, at(0.98, 0.95));
    QTest::mouseMove(view, QPoint(225, 5));
    QTest::mouseClick(view, Qt::LeftButton, {}, QPoint(225, 5)); // beside all blocks
    QTRY_COMPARE(frameWidth(), 0);
    QCOMPARE(backend.clicked, QByteArrayList({block, block}));
}

QTEST_MAIN(BlockViewTest)
#include "tst_block_view.moc"
