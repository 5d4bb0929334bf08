#include "proof/fuzz/live_editor.h"

#include "plugin/velmar_sample_plugin_factory.h"

#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>
#include <QTest>

namespace proof {

namespace {

/// Nobody is there to answer a box.
class NobodyAnswers : public QObject
{
public:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        auto *box = qobject_cast<QMessageBox *>(watched);
        if (box && event->type() == QEvent::Show)
            QMetaObject::invokeMethod(box, "reject", Qt::QueuedConnection);
        return false;
    }
};

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
    qApp->installEventFilter(new NobodyAnswers);
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

void letHappen()
{
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

} // namespace proof
