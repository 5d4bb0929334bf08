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
    void init();
    void followsSizeAndColours();
    void blockAnswersThePointer_data() { addBlocks(); }
    void blockAnswersThePointer();
    void blockAnswersTheKeys_data() { addBlocks(); }
    void blockAnswersTheKeys();
    void cleanup() { m_page.reset(); }

private:
    static void addBlocks();
    void resize(const QSize &size);
    /// The frame of the tested block.
    QQuickItem *frame() const
    {
        return m_view->rootObject()->property(QTest::currentDataTag()).value<QQuickItem *>();
    }

    QScopedPointer<QWidget> m_page;
    Backend m_backend;
    QWidget *m_container = nullptr;
    QQuickView *m_view = nullptr;
};

void BlockViewTest::addBlocks()
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

void BlockViewTest::init()
{
    m_backend.clicked.clear();
    m_page.reset(new QWidget);
    m_container = createBlockView(&m_backend, m_page.data());
    const auto windows = QGuiApplication::allWindows();
    const auto found
        = std::find_if(windows.begin(), windows.end(), [](auto *w) { return w->inherits("QQuickView"); });
    QVERIFY(found != windows.end());
    m_view = static_cast<QQuickView *>(*found);
    QVERIFY2(m_view->status() == QQuickView::Ready, qPrintable(m_view->errors().value(0).toString()));
    m_page->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_page.data()));
    resize(QSize(900, 500));
}

void BlockViewTest::resize(const QSize &size)
{
    m_container->resize(size);
    m_page->resize(size);
    QTRY_COMPARE(m_view->size(), size);
    QTRY_COMPARE(m_view->rootObject()->size(), QSizeF(size));
}

void BlockViewTest::followsSizeAndColours()
{
    for (const QSize &size : {QSize(1300, 600), QSize(900, 500)}) {
        resize(size);
        const auto *picture = m_view->rootObject()->property("picture").value<QQuickItem *>();
        QTRY_COMPARE(picture->property("status").toInt(), 1); // ready
        QCOMPARE(picture->property("sourceSize").toSize().width(), size.width() > 1000 ? 1528 : 764);
        for (const QColor &ground : {QColor(Qt::white), QColor(Qt::black)}) {
            m_page->setPalette(ground);
            QCOMPARE(picture->property("source").toString().contains(QLatin1String("_light")),
                     ground == Qt::white);
            QCOMPARE(m_view->color(), m_container->palette().color(QPalette::Window));
        }
    }
}

void BlockViewTest::blockAnswersThePointer()
{
    QFETCH(QRectF, area);
    const QByteArray block = QTest::currentDataTag();
    const auto at = [&](qreal x, qreal y) {
        const QPointF share = area.topLeft() + QPointF(area.width() * x, area.height() * y);
        return QPointF(share.x() * 900, share.y() * 500).toPoint();
    };
    QTest::mouseMove(m_view, at(0.5, 0.5));
    QTRY_COMPARE(QQmlProperty::read(frame(), QStringLiteral("border.width")).toInt(), 4);
    for (const QPoint &point : {at(0.02, 0.05), at(0.98, 0.95), at(-0.02, 0.5), at(0.5, 1.05)})
        QTest::mouseClick(m_view, Qt::LeftButton, {}, point);
    QCOMPARE(m_backend.clicked, QByteArrayList({block, block}));
}

/// By arrow keys from the top left: to the right column, then to the block's own row.
void BlockViewTest::blockAnswersTheKeys()
{
    QFETCH(QRectF, area);
    QFETCH(QString, title);
    m_container->setFocus(Qt::TabFocusReason);
    const auto press = [this](Qt::Key key, int times) {
        for (; times > 0; --times)
            QTest::keyClick(m_container, key);
    };
    const QPointF middle = area.center();
    press(Qt::Key_Right, int(middle.x() * 3));
    press(Qt::Key_Up, 2);
    press(Qt::Key_Down, int(middle.y() * 3));
    QCOMPARE(m_view->rootObject()->property("chosen").value<QQuickItem *>(), frame());
    QCOMPARE(m_container->accessibleName(), QStringLiteral("Block diagram: ") + title);
    QTest::keyClick(m_container, Qt::Key_Return);
    QCOMPARE(m_backend.clicked, QByteArrayList{QTest::currentDataTag()});
    m_container->clearFocus();
    QVERIFY(!m_view->rootObject()->property("chosen").value<QQuickItem *>());
}

QTEST_MAIN(BlockViewTest)
#include "tst_block_view.moc"
