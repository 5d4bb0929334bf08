#include "benchmarks/all_editors.h"

#include <QMetaObject>

namespace bench {

AllEditors::AllEditors()
    : session(factory())
{
    session.goLive();
    for (const char *open :
         {"onBtInGainClicked", "onNetRxGainClicked", "onUsbInGainClicked", "onMatrixMixerClicked",
          "onBtOutGainClicked", "onNetTxGainClicked", "onUsbOutGainClicked"})
        QMetaObject::invokeMethod(session.editor(), open);
}

PlexoPluginFactory *AllEditors::factory()
{
    static VelmarSamplePluginFactory factory;
    return &factory;
}

QByteArray levels(int step)
{
    QByteArray datagram(19, '\0');
    datagram[0] = char(0x81);
    for (int i = 3; i < datagram.size(); ++i)
        datagram[i] = char(-6 - (step * (i + 3) * 7) % 40);
    return datagram;
}

} // namespace bench
