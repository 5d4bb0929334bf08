#pragma once

#include "dsp/input_strip.h"
#include "dsp/output_strip.h"

// The strips of the six editors. An inherited constructor stays as public as it was.

/// One network receive channel.
class NetRxChStrip : public InputStrip
{
    Q_OBJECT
    using InputStrip::InputStrip;
};

/// One USB playback channel.
class UsbInChStrip : public InputStrip
{
    Q_OBJECT
    using InputStrip::InputStrip;
};

/// One Bluetooth input channel.
class BtInChStrip : public InputStrip
{
    Q_OBJECT
    using InputStrip::InputStrip;
};

/// One network transmit channel.
class NetTxChStrip : public OutputStrip
{
    Q_OBJECT
    using OutputStrip::OutputStrip;
};

/// One USB record channel.
class UsbOutChStrip : public OutputStrip
{
    Q_OBJECT
    using OutputStrip::OutputStrip;
};

/// The Bluetooth output channel.
class BtOutChStrip : public OutputStrip
{
    Q_OBJECT
    using OutputStrip::OutputStrip;
};
