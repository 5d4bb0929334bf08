#include "devhost/device_view.h"
#include "devhost/host.h"
#include "devhost/host_window.h"
#include "devhost/known_device.h"
#include "devhost/options.h"
#include "devhost/overwrite_dialog.h"
#include "devhost/refusal_dialog.h"
#include "devhost/tour/file_dialogs.h"
#include "devhost/tour/hands.h"
#include "devhost/whole_file.h"
#include "devhost/window_memory.h"
#include "host/plexo_plugin.h"
#include "tests/devhost/fake_device.h"
#include "tests/support/box_answerer.h"

#include <QApplication>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPointer>
#include <QScreen>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QTreeView>

using namespace devhost;

namespace {

/// What of the program's texts that hold @p name Qt would read as markup.
QStringList readAsMarkup(const QString &name)
{
    QStringList texts;
    for (const QWidget *widget : QApplication::allWidgets()) {
        const auto *label = qobject_cast<const QLabel *>(widget);
        if (label && label->textFormat() != Qt::PlainText)
            texts.append(label->text());
        texts.append(widget->toolTip());
        const auto *view = qobject_cast<const QAbstractItemView *>(widget);
        for (int column = 0; view && column < view->model()->columnCount(); ++column)
            texts.append(view->model()->index(0, column).data(Qt::ToolTipRole).toString());
    }
    texts = texts.filter(name);
    texts.removeDuplicates();
    return texts;
}

} // namespace

/// Uses the host as a user would, with a fake plugin and a fake device on the loopback interface.
class Window : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void opensAndClosesEditor();
    void tilesAsOftenAsAsked();
    void saysWhyNoEditorOpens();
    void refusesSnapshot_data();
    void refusesSnapshot();
    void tellsRefusalsUntilSeen();
    void showsNamesAsTheyAre();
    void leavesEditorAloneInFlood();
    void closingWindowEndsEditors();

private:
    DeviceView *view() const { return m_window->findChild<DeviceView *>(); }
    QString statusText() const { return m_window->findChild<QLabel *>(QStringLiteral("hostStatus"))->text(); }
    QString cell(int column) const { return view()->model()->index(0, column).data().toString(); }
    EditorSession *session(const QString &name = QStringLiteral("KBX-0001")) const
    {
        return m_host->sessions()->session(name);
    }
    PlexoPlugin *plugin() const { return qobject_cast<PlexoPlugin *>(session()->editor()->parentWidget()); }
    QString menu(const QStringList &entries) const
    {
        return tour::hands::chooseMenu(m_window->menuBar(), QStringList{QStringLiteral("Device")} + entries);
    }
    void openEditor(const QString &name = QStringLiteral("KBX-0001"));
    void answerFileDialog(const QString &path);

    QScopedPointer<QTemporaryDir> m_folder;
    QScopedPointer<WindowMemory> m_memory;
    QScopedPointer<Host> m_host;
    QScopedPointer<HostWindow> m_window;
    QScopedPointer<FakeDevice> m_device;
};

void Window::init()
{
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    m_folder.reset(new QTemporaryDir);
    m_memory.reset(new WindowMemory(QString()));
    m_host.reset(new Host);
    m_window.reset(new HostWindow(m_host.data(), m_memory.data(), m_folder->path()));
    Options options;
    options.plugins = QStringList{QStringLiteral(MODULE_FOLDER "/fake_module")};
    m_host->start(options, loopbackInterface());
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window.data()));
    m_device.reset(new FakeDevice);
    // Over and over: the box that tells of a loss would wait for an answer while a failing test waits.
    auto *announcing = new QTimer(m_device.data());
    connect(announcing, &QTimer::timeout, m_device.data(), [this] { m_device->announce("KBX-0001"); });
    announcing->start(500);
    QTRY_COMPARE(view()->model()->rowCount(), 1);
}

void Window::cleanup()
{
    m_window.reset();
    m_host.reset();
    m_device.reset(); // its announcements would send the next test's requests to a port that has gone
}

void Window::openEditor(const QString &name)
{
    QTest::keyClick(view(), Qt::Key_Return);
    QVERIFY(session(name));
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
    QTRY_VERIFY(
        !log->match(log->index(0, CommunicationLog::Text), Qt::DisplayRole, QStringLiteral("attached"))
             .isEmpty());
    openEditor();
    QCOMPARE(session()->editor(), editor);
    emit plugin()->updatePluginStatus(QStringLiteral("Settings have changed"), true);
    QCOMPARE(cell(6), QStringLiteral("Settings have changed"));
    emit plugin()->pluginRequestClose();
    QVERIFY(!session());
    QCOMPARE(cell(6), QStringLiteral("Double-click to open the editor"));
}

void Window::tilesAsOftenAsAsked()
{
    openEditor();
    QWidget *editor = session()->editor()->window();
    QVERIFY(QTest::qWaitForWindowExposed(editor));
    const QStringList tile{QStringLiteral("Window"), QStringLiteral("Tile")};
    for (int time = 0; time < 2; ++time) {
        editor->move(m_window->screen()->availableGeometry().center());
        QCOMPARE(tour::hands::chooseMenu(m_window->menuBar(), tile), QString());
        QTRY_COMPARE(editor->frameGeometry().topLeft(), m_window->screen()->availableGeometry().topLeft());
    }
}

void Window::saysWhyNoEditorOpens()
{
    view()->prefer(QStringLiteral("KBX-0002"));
    m_device->announce("KBX-0002", "OTHER");
    QTRY_COMPARE(view()->model()->rowCount(), 2);
    QCOMPARE(view()->selectedDevice()->name(), QStringLiteral("KBX-0002"));
    emit view()->openRequested(m_host->finder()->device(QStringLiteral("KBX-0002")));
    QVERIFY2(statusText().contains(QStringLiteral("OTHER")), qPrintable(statusText()));
    QVERIFY(!m_host->sessions()->session(QStringLiteral("KBX-0002")));
}

void Window::refusesSnapshot_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<int>("padding");
    QTest::addColumn<QString>("box");
    const QString question = QStringLiteral("Overwrite all settings of KBX-0001 (127.0.0.1) with a.xml?");
    QTest::newRow("cancelled") << QByteArray("good") << 0 << question;
    QTest::newRow("refused by the plugin")
        << QByteArray("bad") << 0 << QStringLiteral("a.xml does not fit KBX-0001");
    QTest::newRow("too large") << QByteArray("good") << int(LargestSnapshot)
                               << QStringLiteral("larger than 4 MiB");
}

void Window::refusesSnapshot()
{
    QFETCH(const QByteArray, content);
    QFETCH(const int, padding);
    QFETCH(const QString, box);
    const QString path = m_folder->filePath(QStringLiteral("a.xml"));
    writeWholeFile(path, content + QByteArray(padding, ' '));
    openEditor();
    answerFileDialog(path);
    support::BoxAnswerer answerer(QMessageBox::Ok);
    QString asked;
    QTimer answer;
    connect(&answer, &QTimer::timeout, this, [&asked] {
        auto *dialog = qobject_cast<OverwriteDialog *>(QApplication::activeModalWidget());
        if (!dialog)
            return;
        asked = dialog->question();
        dialog->reject();
    });
    answer.start(5);
    QCOMPARE(menu({QStringLiteral("Load Snapshot...")}), QString());
    const QString text = asked.isEmpty() ? answerer.seen().value(0).text : asked;
    QVERIFY2(text.contains(box), qPrintable(text));
    QCOMPARE(plugin()->property("applied"), QVariant());
}

void Window::tellsRefusalsUntilSeen()
{
    openEditor();
    const QStringList entry{QStringLiteral("Refused Changes...")};
    plugin()->queueVelmarAsciiMsg(QStringLiteral("KBX-0001"), R"({"set":"/usb/mode","value":"9x9"})", true);
    QTRY_COMPARE(m_device->heard().size(), 1);
    m_device->answer(R"({"cmd":"set","param":"/usb/mode","result":"no <i>such</i> mode"})");
    QTRY_VERIFY2(cell(6).startsWith(QStringLiteral("1 refused")), qPrintable(cell(6)));
    const auto *notice = m_window->findChild<QLabel *>(QStringLiteral("notice"));
    QCOMPARE(notice->text(),
             QStringLiteral("KBX-0001 refused to set /usb/mode to \"9x9\": no <i>such</i> mode."));
    QString listed;
    QTimer close;
    connect(&close, &QTimer::timeout, this, [&listed] {
        auto *dialog = qobject_cast<RefusalDialog *>(QApplication::activeModalWidget());
        if (!dialog)
            return;
        const auto *model = dialog->findChild<QTreeView *>()->model();
        listed = model->index(0, 2).data().toString();
        dialog->reject();
    });
    close.start(5);
    QCOMPARE(menu(entry), QString());
    QCOMPARE(listed, QStringLiteral("no <i>such</i> mode"));
    QVERIFY(!cell(6).contains(QStringLiteral("refused")) && !notice->isVisible());
}

void Window::showsNamesAsTheyAre()
{
    const QString name = QStringLiteral("<img src=/a.png>");
    m_device->announce(name.toUtf8());
    QTRY_COMPARE(view()->model()->rowCount(), 2);
    view()->selectRow(0);
    QCOMPARE(cell(1), name);
    QVERIFY2(statusText().contains(name), qPrintable(statusText()));
    openEditor(name);
    QCOMPARE(readAsMarkup(name), QStringList());

    const QString path = m_folder->filePath(QStringLiteral("a.xml"));
    writeWholeFile(path, "bad");
    answerFileDialog(path);
    support::BoxAnswerer answerer(QMessageBox::Ok);
    answerer.setWhileOpen([&name] { QCOMPARE(readAsMarkup(name), QStringList()); });
    QCOMPARE(menu({QStringLiteral("Load Snapshot...")}), QString());
    QVERIFY(answerer.seen().value(0).text.contains(name));

    QString suggested;
    QTimer cancel;
    connect(&cancel, &QTimer::timeout, this, [&suggested] {
        if (QFileDialog *dialog = tour::fileDialog()) {
            suggested = dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"))->text();
            dialog->reject();
        }
    });
    cancel.start(20);
    QCOMPARE(menu({QStringLiteral("Save Snapshot...")}), QString());
    QVERIFY2(suggested.startsWith(QStringLiteral("-img src=-a.png- 20")), qPrintable(suggested));
}

void Window::leavesEditorAloneInFlood()
{
    openEditor();
    // From the very place of the device.
    for (int number = 0; number < 600; ++number) {
        m_device->announce("F" + QByteArray::number(number));
        if (number % 50 == 0) { // what a socket holds
            m_device->announce("KBX-0001");
            QTest::qWait(0);
        }
    }
    QTRY_VERIFY(m_host->finder()->device(QStringLiteral("F0")));
    QVERIFY(view()->model()->rowCount() <= 500);
    plugin()->queueVelmarAsciiMsg(QStringLiteral("KBX-0001"), "alive?", false);
    QTRY_COMPARE(m_device->heard(), QList<QByteArray>{"alive?"});
    m_device->answer("yes");
    QTRY_COMPARE(plugin()->property("received").toStringList(), QStringList{QStringLiteral("yes")});
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
