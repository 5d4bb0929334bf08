#include "protocol/value_words.h"

#include <array>

namespace words {

namespace {

using ThreeWords = std::array<const char *, 3>;

constexpr ThreeWords ConnectionModes = {"basic", "reconnect", "exclusive"};
constexpr ThreeWords Profiles = {"both", "media", "hfp"};

struct UsbModeWord
{
    const char *word;
    UsbMode mode;
};

constexpr std::array<UsbModeWord, 5> UsbModes = {{
    {"2x2", {false, false, false}},
    {"speakerphone_no_ec", {true, false, false}},
    {"speakerphone_ec", {true, true, false}},
    {"speakerphone_telephony_no_ec", {true, false, true}},
    {"speakerphone_telephony_ec", {true, true, true}},
}};

int indexOf(const ThreeWords &table, const QString &word)
{
    for (int i = 0; i < 2; ++i) {
        if (word == QLatin1String(table[size_t(i)]))
            return i;
    }
    return 2;
}

QString wordAt(const ThreeWords &table, int index)
{
    return QLatin1String(table[index == 0 || index == 1 ? size_t(index) : 2]);
}

} // namespace

int connectionModeIndex(const QString &word)
{
    return indexOf(ConnectionModes, word);
}

QString connectionModeWord(int index)
{
    return wordAt(ConnectionModes, index);
}

int profileIndex(const QString &word)
{
    return indexOf(Profiles, word);
}

QString profileWord(int index)
{
    return wordAt(Profiles, index);
}

QString usbModeWord(const UsbMode &mode)
{
    if (!mode.speakerphone)
        return QLatin1String(UsbModes.front().word);
    for (const UsbModeWord &row : UsbModes) {
        if (row.mode.speakerphone && row.mode.echoCancellation == mode.echoCancellation
            && row.mode.telephony == mode.telephony)
            return QLatin1String(row.word);
    }
    Q_UNREACHABLE();
}

UsbMode usbMode(const QString &word)
{
    for (const UsbModeWord &row : UsbModes) {
        if (word == QLatin1String(row.word))
            return row.mode;
    }
    return {true, false, false};
}

} // namespace words
