#include "devhost/device_view.h"
#include "devhost/host.h"
#include "devhost/host_window.h"
#include "devhost/known_device.h"
#include "devhost/options.h"
#include "devhost/tour/file_dialogs.h"
#include "devhost/tour/hands.h"
#include "devhost/whole_file.h"
#include "host/plexo_plugin.h"
#include "tests/devhost/fake_device.h"
#include "tests/support/box_answerer.h"

#include <QApplication>
#include <QLabel>
#include <QMenuBar>
#include <QPointer>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

using namespace devhost;

/// Uses the host as a user would, with a fake plugin and a fake device on the loopback interface.
class Window : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void opensAndClosesEditor();
    void saysWhyNoEditorOpens();
    void savesSnapshot();
    void loadsSnapshot_data();
    void loadsSnapshot();
    void showsLossAndStatus();
    void closingWindowEndsEditors();

private:
    DeviceView *view() const { return m_window->findChild<DeviceView *>(); }
    QString statusText() const { return m_window->findChild<QLabel *>(QStringLiteral("hostStatus"))->text(); }
    QString cell(int column) const { return view()->model()->index(0, column).data().toString(); }
    EditorSession *session() const { return m_host->sessions()->session(QStringLiteral("KBX-0001")); }
    PlexoPlugin *plugin() const { return qobject_cast<PlexoPlugin *>(session()->editor()->parentWidget()); }
    QString menu(const QStringList &entries) const
    {
        return tour::hands::chooseMenu(m_window->menuBar(), QStringList{QStringLiteral("Device")} + entries);
    }
    void openEditor();
    void answerFileDialog(const QString &path);

    QScopedPointer<QTemporaryDir> m_folder;
    QScopedPointer<Host> m_host;
    QScopedPointer<HostWindow> m_window;
    QScopedPointer<FakeDevice> m_device;
};

void Window::init()
{
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    m_folder.reset(new QTemporaryDir);
    m_host.reset(new Host);
    m_window.reset(new HostWindow(m_host.data(), m_folder->path()));
    Options options;
    options.plugins = QStringList{QStringLiteral(MODULE_FOLDER "/fake_module")};
    m_host->start(options, loopbackInterface());
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window.data()));
    m_device.reset(new FakeDevice);
    m_device->announce("KBX-0001");
    QTRY_COMPARE(view()->model()->rowCount(), 1);
}

void Window::cleanup()
{
    m_window.reset();
    m_host.reset();
}

void Window::openEditor()
{
    QTest::keyClick(view(), Qt::Key_Return);
    QVERIFY(session());
}

void Window::answerFileDialog(const QString &path)
{
    auto *poll = new QTimer(m_window.data());
    connect(poll, &QTimer::timeout, this, [poll, missing = tour::untilChosen(path), seen = false]() mutable {
        seen |= tour::fileDialog() != nullptr;
        if (missing().isEmpty() && seen)
            poll->deleteLater();
    });
    poll->start(20);
}

void Window::opensAndClosesEditor()
{
    QVERIFY(!menu({QStringLiteral("Save Snapshot...")}).isEmpty());
    QTest::keyClick(view(), Qt::Key_Escape);
    openEditor();
    const QWidget *editor = session()->editor();
    QVERIFY(editor->isVisible());
    QAbstractItemModel *log = m_host->log();
    QVERIFY(!log->match(log->index(0, CommunicationLog::Text), Qt::DisplayRole, QStringLiteral("attached"))
                 .isEmpty());
    openEditor();
    QCOMPARE(session()->editor(), editor);
    emit plugin()->updatePluginStatus(QStringLiteral("Settings have changed"), true);
    QCOMPARE(cell(6), QStringLiteral("Settings have changed"));
    emit plugin()->pluginRequestClose();
    QVERIFY(!session());
    QCOMPARE(cell(6), QStringLiteral("Double-click to open the editor"));
}

void Window::saysWhyNoEditorOpens()
{
    m_device->announce("KBX-0002", "OTHER");
    QTRY_COMPARE(view()->model()->rowCount(), 2);
    emit view()->openRequested(m_host->finder()->device(QStringLiteral("KBX-0002")));
    QVERIFY2(statusText().contains(QStringLiteral("OTHER")), qPrintable(statusText()));
    QVERIFY(!m_host->sessions()->session(QStringLiteral("KBX-0002")));
}

void Window::savesSnapshot()
{
    openEditor();
    const QString path = m_folder->filePath(QStringLiteral("saved.xml"));
    answerFileDialog(path);
    QCOMPARE(menu({QStringLiteral("Save Snapshot...")}), QString());
    QCOMPARE(readWholeFile(path, 1000).bytes, QByteArray("good snapshot of KBX-0001"));
    QVERIFY(statusText().contains(path));
}

void Window::loadsSnapshot_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<int>("padding");
    QTest::addColumn<QString>("box");
    QTest::addColumn<int>("answer");
    QTest::addColumn<bool>("applied");
    const QString question = QStringLiteral("Overwrite all settings of KBX-0001 (127.0.0.1) with a.xml?");
    QTest::newRow("cancelled") << QByteArray("good") << 0 << question << int(QMessageBox::Cancel) << false;
    QTest::newRow("refused by the plugin")
        << QByteArray("bad") << 0 << QStringLiteral("a.xml does not fit KBX-0001") << int(QMessageBox::Ok)
        << false;
    QTest::newRow("too large") << QByteArray("good") << int(LargestSnapshot)
                               << QStringLiteral("larger than 4 MiB") << int(QMessageBox::Ok) << false;
    QTest::newRow("overwritten") << QByteArray("good") << 0 << question << int(QMessageBox::NoButton) << true;
}

void Window::loadsSnapshot()
{
    QFETCH(const QByteArray, content);
    QFETCH(const int, padding);
    QFETCH(const QString, box);
    QFETCH(const int, answer);
    QFETCH(const bool, applied);
    const QString path = m_folder->filePath(QStringLiteral("a.xml"));
    writeWholeFile(path, content + QByteArray(padding, ' '));
    openEditor();
    answerFileDialog(path);
    support::BoxAnswerer answerer{QMessageBox::StandardButton(answer)};
    QString asked;
    QTimer overwrite;
    connect(&overwrite, &QTimer::timeout, this, [&asked] {
        const auto *open = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        auto *button = open ? open->findChild<QPushButton *>(QStringLiteral("overwriteButton")) : nullptr;
        if (!button)
            return;
        asked = open->text();
        button->click();
    });
    if (applied)
        overwrite.start(5);
    QCOMPARE(menu({QStringLiteral("Load Snapshot...")}), QString());
    const QString text = applied ? asked : answerer.seen().value(0).text;
    QVERIFY2(text.contains(box), qPrintable(text));
    QCOMPARE(plugin()->property("applied").toStringList(),
             applied ? QStringList{QString::fromUtf8(content)} : QStringList());
    QCOMPARE(statusText().contains(QStringLiteral("was sent to KBX-0001")), applied);
}

void Window::showsLossAndStatus()
{
    QCOMPARE(cell(0), QStringLiteral("Present"));
    m_host->finder()->device(QStringLiteral("KBX-0001"))->setPresent(false);
    QCOMPARE(cell(0), QStringLiteral("Lost"));
    QVERIFY2(statusText().contains(QStringLiteral("KBX-0001 is lost")), qPrintable(statusText()));
    QVERIFY(!menu({QStringLiteral("Open")}).isEmpty());
}

void Window::closingWindowEndsEditors()
{
    openEditor();
    const QPointer<PlexoPlugin> gone(plugin());
    m_window->close();
    QVERIFY(!session());
    QTRY_VERIFY(!gone);
}

QTEST_MAIN(Window)
#include "tst_host_window.moc"
