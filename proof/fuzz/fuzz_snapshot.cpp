// Snapshot documents, checked and, where they pass, applied to a live editor.

#include "proof/fuzz/live_editor.h"

#include <QTest>
#include <QXmlStreamReader>

namespace {

constexpr int InputsASending = 64; // which takes longest; what speaks of commands is always sent

bool hasDocumentType(const QByteArray &document)
{
    QXmlStreamReader xml(document);
    while (!xml.atEnd() && !xml.isStartElement()) {
        if (xml.readNext() == QXmlStreamReader::DTD)
            return true;
    }
    return false;
}

/// All that the document asks for goes to the device: settings, no commands.
void sendAll(const support::EditorSession &session)
{
    const bool isSent = QTest::qWaitFor([&] {
        return session.script->isIdle() && !session.plugin->hasWaitingQueries()
            && !session.plugin->getVelmarAsciiTimer()->isActive();
    });
    if (!isSent)
        qFatal("the channel does not come to rest");
    for (const QString &message : session.script->commands()) {
        const QString path = message.section(QLatin1Char('"'), 3, 3);
        if (path != QLatin1String("/control/req_metering") && !path.startsWith(QLatin1String("/system/"))
            && !path.startsWith(QLatin1String("/preset/")))
            qFatal("a snapshot sends %s", qPrintable(message));
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    support::EditorSession &session = proof::liveEditor();
    static int inputs = 0;
    const QByteArray document(reinterpret_cast<const char *>(data), int(size));
    session.script->forget();
    if (session.plugin->checkSnapshot(document)) {
        if (hasDocumentType(document))
            qFatal("a document type is taken");
        session.plugin->applySnapshot(document);
        if (++inputs % InputsASending == 0 || document.contains("/control/"))
            sendAll(session);
    }
    session.plugin->clearVelmarAsciiPendingRequest();
    proof::letHappen();
    return 0;
}
