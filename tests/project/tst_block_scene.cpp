#include <QQmlContext>
#include <QQmlEngine>
#include <QQmlProperty>
#include <QQuickItem>
#include <QQuickView>
#include <QTabWidget>
#include <QVBoxLayout>
#include <QtTest>

#include <array>

namespace {

/// Stands for the editor window behind the scene: keeps the slots that were called.
class Backend : public QObject
{
    Q_OBJECT

public:
    QStringList calls;

public slots:
    void onBtInGainClicked() { calls << QStringLiteral("onBtInGainClicked"); }
    void onNetRxGainClicked() { calls << QStringLiteral("onNetRxGainClicked"); }
    void onUsbInGainClicked() { calls << QStringLiteral("onUsbInGainClicked"); }
    void onMatrixMixerClicked() { calls << QStringLiteral("onMatrixMixerClicked"); }
    void onBtOutGainClicked() { calls << QStringLiteral("onBtOutGainClicked"); }
    void onNetTxGainClicked() { calls << QStringLiteral("onNetTxGainClicked"); }
    void onUsbOutGainClicked() { calls << QStringLiteral("onUsbOutGainClicked"); }
};

/// A live area: its alias in the scene, its share of the picture, the slot that a click calls.
struct Area
{
    const char *alias;
    QRectF share;
    const char *slot;
};

constexpr std::array<Area, 7> areas{{
    {"btInGain", {0.008, 0.153, 0.16, 0.082}, "onBtInGainClicked"},
    {"netRxGain", {0.01, 0.338, 0.16, 0.314}, "onNetRxGainClicked"},
    {"usbInGain", {0.01, 0.798, 0.16, 0.082}, "onUsbInGainClicked"},
    {"matrixMixer", {0.428, 0.124, 0.08, 0.75}, "onMatrixMixerClicked"},
    {"btOutGain", {0.83, 0.153, 0.16, 0.082}, "onBtOutGainClicked"},
    {"netTxGain", {0.828, 0.338, 0.161, 0.327}, "onNetTxGainClicked"},
    {"usbOutGain", {0.83, 0.798, 0.16, 0.082}, "onUsbOutGainClicked"},
}};

} // namespace

/// The block diagram: its live areas lie where the picture has its blocks, frame themselves under the
/// pointer and call the editor window.
class TestBlockScene : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void cleanupTestCase();
    void beginsAtItsOwnSize();
    void areasFollowThePicture_data();
    void areasFollowThePicture();
    void areaAnswersThePointer_data();
    void areaAnswersThePointer();

private:
    QQuickItem *area(const QString &alias) const;
    QPoint centreOf(const QString &alias) const;
    void showAt(QSize size);

    Backend m_backend;
    QScopedPointer<QTabWidget> m_tabs;
    QPointer<QQuickView> m_view;
};

void TestBlockScene::initTestCase()
{
    qmlRegisterType<Backend>("TarnKBXBackEnd", 1, 0, "TarnKBXBackEnd");
}

/// The view as the editor uses it: loaded first, given its back end, then put into a page without margins.
void TestBlockScene::init()
{
    m_backend.calls.clear();
    m_tabs.reset(new QTabWidget);
    m_view = new QQuickView(QUrl(QStringLiteral("qrc:/TarnKBX_QML/DSP.qml")));
    m_view->rootContext()->setContextProperty(QStringLiteral("tarnkbx_backend"), &m_backend);
    auto *page = new QWidget;
    auto *layout = new QVBoxLayout(page);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(QWidget::createWindowContainer(m_view, page));
    m_tabs->addTab(page, QStringLiteral("DSP"));
    QVERIFY2(m_view->status() == QQuickView::Ready, qPrintable(m_view->errors().value(0).toString()));
}

void TestBlockScene::cleanup()
{
    m_tabs.reset();
}

/// Quick keeps the picture for the next view and lets go of a dropped one in the next frame of any window.
void TestBlockScene::cleanupTestCase()
{
    QQuickWindow window;
    window.releaseResources();
    QSignalSpy frames(&window, &QQuickWindow::frameSwapped);
    window.show();
    QVERIFY(frames.wait());
}

QQuickItem *TestBlockScene::area(const QString &alias) const
{
    return m_view->rootObject()->property(qPrintable(alias)).value<QQuickItem *>();
}

QPoint TestBlockScene::centreOf(const QString &alias) const
{
    const QQuickItem *item = area(alias);
    return item->mapToScene({item->width() / 2, item->height() / 2}).toPoint();
}

void TestBlockScene::showAt(QSize size)
{
    m_tabs->resize(size);
    m_tabs->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_tabs.data()));
    const QSizeF page = m_tabs->currentWidget()->size();
    QTRY_COMPARE(QSizeF(m_view->rootObject()->size()), page);
}

void TestBlockScene::beginsAtItsOwnSize()
{
    QCOMPARE(m_view->resizeMode(), QQuickView::SizeViewToRootObject);
    QCOMPARE(m_view->size(), QSize(800, 425));
}

void TestBlockScene::areasFollowThePicture_data()
{
    QTest::addColumn<QSize>("size");
    QTest::newRow("as first shown") << QSize(869, 500);
    QTest::newRow("large") << QSize(1300, 700);
    QTest::newRow("small and wide") << QSize(600, 200);
}

void TestBlockScene::areasFollowThePicture()
{
    QFETCH(QSize, size);
    showAt(size);
    const QSizeF picture = m_view->rootObject()->size();
    for (const Area &expected : areas) {
        const QQuickItem *item = area(QLatin1String(expected.alias));
        QVERIFY2(item, expected.alias);
        const QRectF place(item->mapToScene({0, 0}), item->size());
        QCOMPARE(place.x(), picture.width() * expected.share.x());
        QCOMPARE(place.y(), picture.height() * expected.share.y());
        QCOMPARE(place.width(), picture.width() * expected.share.width());
        QCOMPARE(place.height(), picture.height() * expected.share.height());
    }
}

void TestBlockScene::areaAnswersThePointer_data()
{
    QTest::addColumn<QString>("slot");
    for (const Area &expected : areas)
        QTest::newRow(expected.alias) << QString::fromLatin1(expected.slot);
}

void TestBlockScene::areaAnswersThePointer()
{
    QFETCH(QString, slot);
    const QString alias = QString::fromLatin1(QTest::currentDataTag());
    showAt({869, 500});
    const QQmlProperty width(area(alias), QStringLiteral("border.width"));
    const QQmlProperty colour(area(alias), QStringLiteral("border.color"));
    const QPoint besides(m_view->width() / 3, 4);

    QTest::mouseMove(m_view, besides);
    QTRY_COMPARE(width.read().toInt(), 0);
    QTest::mouseMove(m_view, centreOf(alias));
    QTRY_COMPARE(width.read().toInt(), 4);
    QCOMPARE(colour.read().value<QColor>(), QColor(0xff, 0x77, 0x07));
    QCOMPARE(area(alias)->property("color").value<QColor>().alpha(), 0);

    QTest::mouseClick(m_view, Qt::LeftButton, Qt::NoModifier, centreOf(alias));
    QTRY_COMPARE(m_backend.calls, QStringList{slot});

    QTest::mouseMove(m_view, besides);
    QTRY_COMPARE(width.read().toInt(), 0);
    QCOMPARE(colour.read().value<QColor>(), QColor(0xff, 0x77, 0x07, 0));
}

QTEST_MAIN(TestBlockScene)
#include "tst_block_scene.moc"
