#pragma once

#include "devhost/tour/device_probe.h"
#include "devhost/tour/step.h"
#include "devhost/tour/traffic_watch.h"

#include <QModelIndex>
#include <QRect>
#include <QWidget>

class QTabBar;
class QWindow;

namespace devhost {
class DeviceView;
class EditorSession;
class Host;
class HostWindow;
class KnownDevice;
} // namespace devhost

namespace devhost::tour {

/// The editor's pages by position.
enum Page { ConfigPage, AudioPage, CuePage, DspPage };

/// Reply time-outs in ms: an editor's own, and one that no machine with other work to do comes near.
enum ReplyTimeout { UsualTimeout = 2000, PatientTimeout = 30000 };

/// Knows where things are on screen and what the device has said; the steps of every area use it.
class Guide
{
public:
    /// Neither is owned. @p folder is where steps may keep files. Only a simulated device is shown unless
    /// @p anyDevice.
    Guide(Host *host, HostWindow *window, const QString &folder, bool anyDevice);

    HostWindow *window() const { return m_window; }
    /// The path of a file that a step is going to write, which the next tour may remove.
    QString newFile(const QString &name) const;
    /// The first device found; null before that.
    KnownDevice *device() const;
    /// The host's list, and the name of the device in it.
    DeviceView *deviceView() const;
    QModelIndex deviceRow() const;
    EditorSession *session() const;
    /// How long the open editor waits for a reply, in ms.
    void setReplyTimeout(int ms) const;
    /// Tells the simulated device to misbehave, or no longer.
    void order(const QString &path, const QJsonValue &value) const;
    /// Does so and waits until the device says that it will.
    Step ordered(const QString &name, const QString &path, const QJsonValue &value) const;
    TrafficWatch &traffic() { return m_traffic; }
    DeviceProbe &probe() { return m_probe; }

    /// A widget of the editor by object name; null when there is none of that type.
    template <typename T = QWidget>
    T *find(const QString &objectName) const
    {
        const QWidget *window = editor();
        return window ? window->findChild<T *>(objectName) : nullptr;
    }
    QWidget *editor() const;
    /// A visible window by its title or how that begins; null when there is none.
    QWidget *windowTitled(const QString &title) const;
    /// The Quick view in the editor; null while it has none.
    QWindow *scene() const;

    /// The frame and all of a window, as an area to picture; raises it first.
    std::function<QRect()> areaOf(const std::function<QWidget *()> &window) const;
    std::function<QRect()> editorArea() const;
    std::function<QRect()> titledArea(const QString &title) const;

    // Steps that several areas need

    /// Goes to a page of the editor; pictured when @p picture is not empty.
    Step page(const QString &name, Page page, const QString &picture = QString());
    /// Goes to a tab of any tab widget in the editor.
    Step tab(const QString &name, const QString &tabWidget, int index);
    /// Clicks a button of the editor and waits for the device to confirm @p path.
    Step push(const QString &name, const QString &button, const QString &path);
    /// Sets a check box of the editor and waits for the device to confirm @p path with @p value.
    Step set(const QString &name, const QString &box, bool checked, const QString &path,
             const QJsonValue &value);
    /// Forgets the traffic and does @p act, if any; pictures the editor. What to wait for is the caller's.
    Step heard(const QString &name, const std::function<QString()> &act = {});
    /// Does @p act and waits for a confirmed set of @p path that has @p value; undefined: any value.
    Step confirmed(const QString &name, const std::function<QString()> &act, const QString &path,
                   const QJsonValue &value = QJsonValue(QJsonValue::Undefined));
    /// Does @p act and waits until the editor has read all of the device anew.
    Step reread(const QString &name, const std::function<QString()> &act);
    /// The same with the editor's own button.
    Step refresh(const QString &name);
    /// Closes the window of that title with Escape.
    Step escape(const QString &title);

    /// Replaces the text of a field of the editor and clicks the button that applies it.
    QString enterAndApply(const QString &field, const QString &text, const QString &button) const;

    /// What is missing until the editor shows a device of which all has been read since the traffic was
    /// forgotten.
    QString missingUntilReread() const;
    /// What is missing until a set of @p path is confirmed with @p value; undefined: any value.
    QString missingConfirmation(const QString &path,
                                const QJsonValue &value = QJsonValue(QJsonValue::Undefined)) const;

private:
    Host *m_host;
    HostWindow *m_window;
    QString m_folder;
    bool m_anyDevice;
    TrafficWatch m_traffic;
    DeviceProbe m_probe;
};

/// Empty when @p holds, else @p what.
QString unless(bool holds, const QString &what);
/// The step with a second condition, which is asked only while the step's own one holds.
Step alsoNeeds(Step step, const std::function<QString()> &more);

} // namespace devhost::tour
