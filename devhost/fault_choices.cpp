#include "devhost/fault_choices.h"

namespace devhost {

namespace {

struct ChoiceText
{
    const char *text;
    const char *tip;
    const char *arguments; ///< separated by blanks
};

constexpr ChoiceText texts[] = {
    {"No faults", "Behaves as a good device", ""},
    {"Slow replies", "Every reply takes 400 to 600 ms", "--latency 400 --jitter 200"},
    {"Too slow", "Every reply comes after the plugin's time-out of 2 s", "--latency 2500"},
    {"Lossy network", "One request in ten gets no reply", "--drop 0.1"},
    {"Doubled replies", "Three replies in ten come twice", "--duplicate 0.3"},
    {"Overtaking replies", "Three replies in a hundred come only after the reply to the next request",
     "--reorder 0.03"},
    {"Garbage", "One reply in ten is random bytes", "--garbage 0.1"},
    {"Refuses audio settings", "Every change under /preset is refused", "--refuse set:/preset/*"},
    {"Comes and goes", "Falls silent after 60 requests and returns 8 s later",
     "--vanish-after 60 --return-after 8000"},
    {"Vanishes", "Falls silent for good after 60 requests", "--vanish-after 60"},
    {"Upload: lost acknowledgements", "Some acknowledgements of a file transfer are lost",
     "--tftp-fault lost-ack"},
    {"Upload: doubled acknowledgements", "Acknowledgements of a file transfer come twice",
     "--tftp-fault duplicate-ack"},
    {"Upload: wrong block numbers", "A file transfer is acknowledged with wrong numbers",
     "--tftp-fault wrong-block"},
    {"Upload: refused", "The device ends a file transfer with an error", "--tftp-fault nack"},
    {"Upload: silence", "The device falls silent in the middle of a file transfer", "--tftp-fault silence"},
};

} // namespace

QVector<FaultChoice> faultChoices()
{
    QVector<FaultChoice> choices;
    for (const ChoiceText &text : texts) {
        choices.append({QLatin1String(text.text), QLatin1String(text.tip),
                        QString(QLatin1String(text.arguments)).split(QLatin1Char(' '), Qt::SkipEmptyParts)});
    }
    return choices;
}

} // namespace devhost
