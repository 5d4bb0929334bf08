#include <QDir>
#include <QFile>
#include <QImage>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

namespace {

constexpr int LongestTourMs = 400000; // sanitizers on a busy machine included

/// Every get that an editor opens with, in order.
QStringList openingGets()
{
    QStringList paths{QStringLiteral("/info"), QStringLiteral("/status/voice_cue"),
                      QStringLiteral("/status/usb"), QStringLiteral("/status/bluetooth/state"),
                      QStringLiteral("/status/bluetooth/list_size")};
    for (int phone = 0; phone < 8; ++phone)
        paths.append(QStringLiteral("/status/bluetooth/list/%1").arg(phone));
    paths.append(QStringLiteral("/status/bluetooth/device"));
    for (const char *name :
         {"usb", "bluetooth", "network", "notifications", "function_gen", "metering", "voice_cue"})
        paths.append(QStringLiteral("/system/%1").arg(QLatin1String(name)));
    for (const char *name :
         {"dante_rx", "dante_tx", "usb_playback", "usb_record", "bt_sink", "bt_source", "voice_cue"})
        paths.append(QStringLiteral("/preset/dsp/%1").arg(QLatin1String(name)));
    for (int row = 0; row < 7; ++row)
        paths.append(QStringLiteral("/preset/dsp/mixer/%1").arg(row));
    return paths.replaceInStrings(QRegularExpression(QStringLiteral("^(.*)$")),
                                  QStringLiteral("{\"get\":\"\\1\"}"));
}

QStringList sentTexts(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QStringList texts;
    while (!file.atEnd()) {
        const QJsonObject message = QJsonDocument::fromJson(file.readLine()).object();
        if (message.value(QLatin1String("dir")) == QJsonValue(QStringLiteral("tx")))
            texts.append(message.value(QLatin1String("text")).toString());
    }
    return texts;
}

} // namespace

/// Lets the host program walk through the real plugin with a simulated device.
class WholeTour : public QObject
{
    Q_OBJECT

private slots:
    void confirmsEveryStep();
};

void WholeTour::confirmsEveryStep()
{
    const QTemporaryDir folder;
    QProcess host;
    host.setProcessChannelMode(QProcess::MergedChannels);
    host.start(QStringLiteral(HOST_PROGRAM),
               {QStringLiteral("--simulate"), QStringLiteral("1"), QStringLiteral("--tour"), folder.path()});
    const bool ended = host.waitForFinished(LongestTourMs);
    const QByteArray printed = host.readAll();
    QVERIFY2(ended, printed.constData());
    QVERIFY2(host.exitStatus() == QProcess::NormalExit && host.exitCode() == 0, printed.constData());
    QVERIFY2(!printed.contains("FAILED") && printed.contains("close the editor: ok"), printed.constData());

    const QStringList sent = sentTexts(folder.filePath(QStringLiteral("messages.jsonl")));
    QCOMPARE(sent.mid(0, 35), openingGets());
    QCOMPARE(sent.value(35), QStringLiteral("{\"set\":\"/control/req_metering\", \"value\":100}"));
    QCOMPARE(sent.value(36), QStringLiteral("{\"get\":\"/status/voice_cue\"}"));
    const QStringList pictures = QDir(folder.path()).entryList({QStringLiteral("*.png")});
    QVERIFY(pictures.size() > 30);
    for (const QString &picture : pictures)
        QVERIFY2(!QImage(folder.filePath(picture)).isNull(), qPrintable(picture));
}

QTEST_GUILESS_MAIN(WholeTour)
#include "tst_whole_tour.moc"
