// Level datagrams, to a live editor whose block windows are open.

#include "dsp/metering_socket.h"
#include "proof/fuzz/lines.h"
#include "proof/fuzz/live_editor.h"

#include <QNetworkDatagram>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    support::EditorSession &session = proof::liveEditor();
    const QHostAddress device(QStringLiteral("127.0.0.1"));
    for (const QByteArray &bytes : linesOf(data, size)) {
        QNetworkDatagram datagram(bytes);
        datagram.setSender(device, 1);
        if (isLevelDatagram(datagram, device))
            QMetaObject::invokeMethod(session.editor(), "meteringLevels", Q_ARG(QByteArray, datagram.data()));
    }
    proof::letHappen();
    return 0;
}
