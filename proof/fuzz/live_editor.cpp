#include "proof/fuzz/live_editor.h"

#include "plugin/velmar_sample_plugin_factory.h"

#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>
#include <QScopedValueRollback>
#include <QTest>

namespace proof {

namespace {

constexpr int InputsAPainting = 64; // but each of the first ones, which is what a replay has
int inputs = 0;

/// Nobody is there to answer a box, or to look at what has changed: windows keep what is to be painted anew
/// until paint() is called.
class Nobody : public QObject
{
public:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        auto *box = qobject_cast<QMessageBox *>(watched);
        if (box && event->type() == QEvent::Show)
            QMetaObject::invokeMethod(box, "reject", Qt::QueuedConnection);
        return event->type() == QEvent::UpdateRequest && watched->isWidgetType() && !m_painting;
    }

    void paint()
    {
        const QScopedValueRollback<bool> painting(m_painting, true);
        for (QWidget *window : QApplication::topLevelWidgets()) {
            QEvent request(QEvent::UpdateRequest);
            QCoreApplication::sendEvent(window, &request);
        }
    }

private:
    bool m_painting = false;
};

Nobody *nobody()
{
    static auto *object = new Nobody;
    return object;
}

/// No handler is known for a setting that the user has never changed.
void changeEverything(const support::EditorSession &session)
{
    static const QStringList Spared{QStringLiteral("close"), QStringLiteral("reboot"),
                                    QStringLiteral("reset"), QStringLiteral("_load_"),
                                    QStringLiteral("_def_"), QStringLiteral("priority_pairing")};
    for (QAbstractButton *button : session.editor()->findChildren<QAbstractButton *>()) {
        const bool spared = std::any_of(Spared.begin(), Spared.end(), [button](const QString &part) {
            return button->objectName().contains(part);
        });
        if (!spared && !button->objectName().isEmpty())
            button->click();
    }
}

support::EditorSession *makeEditor()
{
    QApplication::setQuitOnLastWindowClosed(false);
    qApp->installEventFilter(nobody());
    static VelmarSamplePluginFactory factory;
    auto *session = new support::EditorSession(&factory);
    if (!session->goLive())
        qFatal("the editor does not become live");
    changeEverything(*session);
    for (const char *slot :
         {"onNetRxGainClicked", "onUsbInGainClicked", "onBtInGainClicked", "onNetTxGainClicked",
          "onUsbOutGainClicked", "onBtOutGainClicked", "onMatrixMixerClicked"})
        QMetaObject::invokeMethod(session->editor(), slot);
    if (!QTest::qWaitFor(
            [session] { return session->script->isIdle() && !session->plugin->hasWaitingQueries(); }))
        qFatal("the editor does not come to rest");
    return session;
}

} // namespace

support::EditorSession &liveEditor()
{
    static int count = 1;
    static char name[] = "fuzz";
    static char *arguments[] = {name, nullptr};
    static auto *application = new QApplication(count, arguments);
    Q_UNUSED(application)
    static support::EditorSession *session = makeEditor();
    return *session;
}

bool isPaintingDue()
{
    return inputs < InputsAPainting || (inputs + 1) % InputsAPainting == 0;
}

void letHappen()
{
    QCoreApplication::sendPostedEvents();
    if (isPaintingDue()) {
        nobody()->paint();
        QCoreApplication::processEvents();
    }
    ++inputs;
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

} // namespace proof
