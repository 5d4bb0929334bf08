#include "devhost/tour/guide.h"

#include "devhost/device_table_model.h"
#include "devhost/device_view.h"
#include "devhost/host.h"
#include "devhost/host_window.h"
#include "devhost/known_device.h"
#include "devhost/tour/hands.h"
#include "devhost/tour/tour_files.h"
#include "host/plexo_plugin.h"

#include <QApplication>
#include <QCheckBox>
#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QTabBar>
#include <QTabWidget>
#include <QWindow>

namespace devhost::tour {

namespace {

constexpr int FullQuery = 35; // replies until an editor has read the whole device

QString textOf(const QJsonValue &value)
{
    const QByteArray array = QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact);
    return QString::fromUtf8(array.mid(1, array.size() - 2));
}

} // namespace

QString unless(bool holds, const QString &what)
{
    return holds ? QString() : what;
}

Step alsoNeeds(Step step, const std::function<QString()> &more)
{
    step.missing = [first = step.missing, more] {
        QString missing = first();
        return missing.isEmpty() ? more() : missing;
    };
    return step;
}

Guide::Guide(Host *host, HostWindow *window, const QString &folder, bool anyDevice)
    : m_host(host)
    , m_window(window)
    , m_folder(folder)
    , m_anyDevice(anyDevice)
    , m_traffic(host->transport())
{
}

QString Guide::newFile(const QString &name) const
{
    noteFile(m_folder, name);
    return QDir(m_folder).filePath(name);
}

KnownDevice *Guide::device() const
{
    for (KnownDevice *device : m_host->finder()->devices()) {
        if (m_anyDevice || m_host->isSimulated(*device))
            return device;
    }
    return nullptr;
}

DeviceView *Guide::deviceView() const
{
    return m_window->findChild<DeviceView *>();
}

QModelIndex Guide::deviceRow() const
{
    const QAbstractItemModel *devices = deviceView()->model();
    const QModelIndex first = devices->index(0, DeviceTableModel::Name);
    return devices->match(first, Qt::DisplayRole, device()->name()).value(0);
}

EditorSession *Guide::session() const
{
    return device() ? m_host->sessions()->session(device()->name()) : nullptr;
}

QWidget *Guide::editor() const
{
    return session() ? session()->editor() : nullptr;
}

void Guide::setReplyTimeout(int ms) const
{
    if (auto *plugin = editor() ? qobject_cast<PlexoPlugin *>(editor()->parentWidget()) : nullptr)
        plugin->setVelmarAsciiTimeout(ms);
}

void Guide::order(const QString &path, const QJsonValue &value) const
{
    m_host->simulated()->device(device()->name())->order(path, value);
}

Step Guide::ordered(const QString &name, const QString &path, const QJsonValue &value) const
{
    Step step;
    step.name = name;
    step.act = [this, path, value] {
        order(path, value);
        return QString();
    };
    step.missing = [this, path, value] {
        return unless(m_host->simulated()->device(device()->name())->value(path) == value,
                      QStringLiteral("the simulated device does not say so"));
    };
    return step;
}

QWidget *Guide::windowTitled(const QString &title) const
{
    for (QWidget *widget : QApplication::topLevelWidgets()) {
        if (widget->isVisible() && widget->windowTitle().startsWith(title))
            return widget;
    }
    return nullptr;
}

QWindow *Guide::scene() const
{
    for (QWindow *window : QGuiApplication::allWindows()) {
        if (window->inherits("QQuickWindow") && window->isVisible())
            return window;
    }
    return nullptr;
}

std::function<QRect()> Guide::areaOf(const std::function<QWidget *()> &window) const
{
    return [window]() -> QRect {
        QWidget *widget = window();
        if (!widget)
            return QRect();
        widget->window()->raise();
        widget->window()->activateWindow(); // some window managers raise nothing else
        // Asked of the system each time: a widget keeps what it once heard, and while the window manager is
        // making the frame that is nonsense, such as one of a pixel.
        const QWindow *framed = widget->window()->windowHandle();
        const QRect frame = framed ? framed->frameGeometry() : QRect();
        return framed && frame.contains(framed->geometry()) ? frame : QRect();
    };
}

std::function<QRect()> Guide::editorArea() const
{
    return areaOf([this] { return editor(); });
}

std::function<QRect()> Guide::titledArea(const QString &title) const
{
    return areaOf([this, title] { return windowTitled(title); });
}

Step Guide::heard(const QString &name, const std::function<QString()> &act)
{
    Step step;
    step.name = name;
    step.act = [this, act] {
        m_traffic.forget();
        return act ? act() : QString();
    };
    step.area = editorArea();
    return step;
}

Step Guide::confirmed(const QString &name, const std::function<QString()> &act, const QString &path,
                      const QJsonValue &value)
{
    Step step = heard(name, act);
    step.missing = [this, path, value] { return missingConfirmation(path, value); };
    return step;
}

Step Guide::page(const QString &name, Page page, const QString &picture)
{
    Step step = tab(name, QStringLiteral("tabWidget"), page);
    step.picture = picture;
    step.area = editorArea();
    return step;
}

Step Guide::tab(const QString &name, const QString &tabWidget, int index)
{
    const auto barOf = [this, tabWidget] {
        const auto *tabs = find<QTabWidget>(tabWidget);
        return tabs ? tabs->tabBar() : nullptr;
    };
    Step step;
    step.name = name;
    step.act = [barOf, index] { return hands::chooseTab(barOf(), index); };
    step.missing = [barOf, index] {
        const QTabBar *bar = barOf();
        return unless(bar && bar->currentIndex() == index, QStringLiteral("the page is not in front"));
    };
    return step;
}

Step Guide::push(const QString &name, const QString &button, const QString &path)
{
    return confirmed(
        name, [this, button] { return hands::click(find(button)); }, path);
}

Step Guide::set(const QString &name, const QString &box, bool checked, const QString &path,
                const QJsonValue &value)
{
    return confirmed(
        name, [this, box, checked] { return hands::check(find<QCheckBox>(box), checked); }, path, value);
}

Step Guide::reread(const QString &name, const std::function<QString()> &act)
{
    Step step = heard(name, act);
    step.missing = [this] { return missingUntilReread(); };
    return step;
}

Step Guide::refresh(const QString &name)
{
    return reread(name, [this] { return hands::click(find(QStringLiteral("refresh_pushButton"))); });
}

Step Guide::escape(const QString &title)
{
    Step step;
    step.name = QStringLiteral("close %1 with Escape").arg(title);
    step.act = [this, title] { return hands::press(windowTitled(title), Qt::Key_Escape); };
    step.missing = [this, title] { return unless(!windowTitled(title), QStringLiteral("it is still open")); };
    return step;
}

QString Guide::enterAndApply(const QString &field, const QString &text, const QString &button) const
{
    QString why = hands::enter(find(field), text);
    return why.isEmpty() ? hands::click(find(button)) : why;
}

QString Guide::missingUntilReread() const
{
    const int gets = m_traffic.count(QStringLiteral("get"));
    if (gets < FullQuery)
        return QStringLiteral("only %1 of %2 sections have been read").arg(gets).arg(FullQuery);
    const QWidget *frame = find(QStringLiteral("plugin_frame"));
    if (!frame || !frame->isEnabled())
        return QStringLiteral("the editor is not enabled");
    return unless(m_traffic.count(QStringLiteral("set"), QStringLiteral("/control/req_metering")) > 0,
                  QStringLiteral("no levels have been asked for"));
}

QString Guide::missingConfirmation(const QString &path, const QJsonValue &value) const
{
    const QJsonValue answer = m_traffic.value(QStringLiteral("set"), path);
    if (answer.isUndefined())
        return QStringLiteral("%1 is not confirmed").arg(path);
    if (value.isUndefined() || answer == value)
        return QString();
    return QStringLiteral("%1 is confirmed as %2, not %3").arg(path, textOf(answer), textOf(value));
}

} // namespace devhost::tour
