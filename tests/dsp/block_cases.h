#pragma once

#include "dsp/strip_editors.h"

#include <QJsonArray>
#include <QStringList>

#include <memory>

/// One strip editor as the device's documentation describes it, written out so that the tests do not take
/// the expected values from the code under test.
struct BlockCase
{
    const char *name;
    StripEditor *(*make)(const QJsonObject *section);
    QStringList labels;
    int gainParameter;
    int firstLevelByte;
    bool overlay;

    int channels() const { return labels.size(); }
    bool isInput() const { return gainParameter == 2; }
    std::unique_ptr<StripEditor> open(const QJsonObject &section) const
    {
        return std::unique_ptr<StripEditor>(make(&section));
    }
};

Q_DECLARE_METATYPE(BlockCase)

template <typename Form, int Channels>
StripEditor *makeForm(const QJsonObject *section)
{
    return new Form(Channels, section);
}

inline QVector<BlockCase> blockCases()
{
    const QStringList four{QStringLiteral("CH 1"), QStringLiteral("CH 2"), QStringLiteral("CH 3"),
                           QStringLiteral("CH 4")};
    const QStringList two = four.mid(0, 2);
    const QStringList bt{QStringLiteral("BT 1"), QStringLiteral("BT 2")};
    return {{"network receive", makeForm<NetRxForm, 4>, four, 2, 3, false},
            {"USB playback", makeForm<UsbInForm, 2>, two, 2, 7, true},
            {"Bluetooth in", makeForm<BtInForm, 2>, bt, 2, 9, true},
            {"network transmit", makeForm<NetTxForm, 4>, four, 1, 12, true},
            {"USB record", makeForm<UsbOutForm, 2>, two, 1, 16, true},
            {"Bluetooth out", makeForm<BtOutForm, 1>, {QStringLiteral("BT Out 1")}, 1, 18, true}};
}

/// A section with one object a channel; muted and inverted are the odd ones, gains are -1, -11, -21 ... dB.
inline QJsonObject sectionOf(int channels)
{
    QJsonArray value;
    for (int channel = 0; channel < channels; ++channel) {
        const bool odd = channel % 2 == 1;
        const QJsonObject limiter{{QStringLiteral("enable"), odd},
                                  {QStringLiteral("threshold"), -30 - channel}};
        value.append(QJsonObject{{QStringLiteral("mute"), odd},
                                 {QStringLiteral("invert"), odd},
                                 {QStringLiteral("gain"), -1 - 10 * channel},
                                 {QStringLiteral("limiter"), limiter}});
    }
    return {{QStringLiteral("value"), value}};
}
