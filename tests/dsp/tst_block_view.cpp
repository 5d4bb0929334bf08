#include "dsp/block_view.h"

#include <QQmlError>
#include <QQmlProperty>
#include <QQuickItem>
#include <QQuickView>
#include <QTest>
#include <QWidget>

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

/// The block view in a window: its live areas lie where the picture has its blocks and call the editor
/// window.
class BlockViewTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { qmlRegisterType<Backend>("TarnKBXBackEnd", 1, 0, "TarnKBXBackEnd"); }
    void blockAnswersThePointer_data();
    void blockAnswersThePointer();
};

void BlockViewTest::blockAnswersThePointer_data()
{
    QTest::addColumn<QString>("title");
    QTest::addColumn<QRectF>("area"); // shares of the picture
    QTest::newRow("btInGain") << "Bluetooth In" << QRectF(0.008, 0.153, 0.16, 0.082);
    QTest::newRow("netRxGain") << "Dante Network Rx" << QRectF(0.01, 0.338, 0.16, 0.314);
    QTest::newRow("usbInGain") << "USB Playback" << QRectF(0.01, 0.798, 0.16, 0.082);
    QTest::newRow("matrixMixer") << "Matrix Mixer" << QRectF(0.428, 0.124, 0.08, 0.75);
    QTest::newRow("btOutGain") << "Bluetooth Out" << QRectF(0.83, 0.153, 0.16, 0.082);
    QTest::newRow("netTxGain") << "Dante Network Tx" << QRectF(0.828, 0.338, 0.161, 0.327);
    QTest::newRow("usbOutGain") << "USB Record" << QRectF(0.83, 0.798, 0.16, 0.082);
}

void BlockViewTest::blockAnswersThePointer()
{
    QFETCH(QRectF, area);
    const QByteArray block = QTest::currentDataTag();
    Backend backend;
    QWidget page;
    QWidget *container = createBlockView(&backend, &page);
    const auto windows = QGuiApplication::allWindows();
    const auto found
        = std::find_if(windows.begin(), windows.end(), [](auto *w) { return w->inherits("QQuickView"); });
    QVERIFY(found != windows.end());
    auto *view = static_cast<QQuickView *>(*found);
    QVERIFY2(view->status() == QQuickView::Ready, qPrintable(view->errors().value(0).toString()));
    page.show();
    QVERIFY(QTest::qWaitForWindowExposed(&page));
    for (const QSize &size : {QSize(1300, 600), QSize(900, 500)}) {
        container->resize(size);
        page.resize(size);
        QTRY_COMPARE(view->size(), size);
        QTRY_COMPARE(view->rootObject()->size(), QSizeF(size));
        const auto *picture = view->rootObject()->property("picture").value<QQuickItem *>();
        QTRY_COMPARE(picture->property("status").toInt(), 1); // ready
        QCOMPARE(picture->property("sourceSize").toSize().width(), size.width() > 1000 ? 1528 : 764);
    }
    const auto at = [&](qreal x, qreal y) {
        const QPointF share = area.topLeft() + QPointF(area.width() * x, area.height() * y);
        return QPointF(share.x() * 900, share.y() * 500).toPoint();
    };
    auto *frame = view->rootObject()->property(block).value<QQuickItem *>();
    QTest::mouseMove(view, at(0.5, 0.5));
    QTRY_COMPARE(QQmlProperty::read(frame, QStringLiteral("border.width")).toInt(), 4);
    for (const QPoint &point : {at(0.02, 0.05), at(0.98, 0.95), at(-0.02, 0.5), at(0.5, 1.05)})
        QTest::mouseClick(view, Qt::LeftButton, {}, point);
    QCOMPARE(backend.clicked, QByteArrayList({block, block}));

    // By arrow keys from the top left: to the right column, then to the block's own row.
    container->setFocus(Qt::TabFocusReason);
    const auto press = [container](Qt::Key key, int times) {
        for (; times > 0; --times)
            QTest::keyClick(container, key);
    };
    const QPointF middle = area.center();
    press(Qt::Key_Right, int(middle.x() * 3));
    press(Qt::Key_Up, 2);
    press(Qt::Key_Down, int(middle.y() * 3));
    QCOMPARE(view->rootObject()->property("chosen").value<QQuickItem *>(), frame);
    QFETCH(QString, title);
    QCOMPARE(container->accessibleName(), QStringLiteral("Block diagram: ") + title);
    QTest::keyClick(container, Qt::Key_Return);
    QCOMPARE(backend.clicked, QByteArrayList({block, block, block}));
    container->clearFocus();
    QVERIFY(!view->rootObject()->property("chosen").value<QQuickItem *>());
}

QTEST_MAIN(BlockViewTest)
#include "tst_block_view.moc"
