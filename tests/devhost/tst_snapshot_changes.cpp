#include "devhost/snapshot_changes.h"

#include <QTest>

using namespace devhost;

class SnapshotChangesTest : public QObject
{
    Q_OBJECT

private slots:
    void namesWhatDiffers_data();
    void namesWhatDiffers();
};

void SnapshotChangesTest::namesWhatDiffers_data()
{
    QTest::addColumn<QByteArray>("now");
    QTest::addColumn<QByteArray>("then");
    QTest::addColumn<QStringList>("changes");
    const auto document = [](const QByteArray &usb, const QByteArray &mixer) {
        return "<?xml version=\"1.0\"?><S><I><V>1.0</V></I><D><USB>" + usb + "</USB><PRESET_MIX>" + mixer
            + "</PRESET_MIX></D></S>";
    };
    const QByteArray usb
        = R"({"cmd":"get","param":"/system/usb","value":{"gain":-3,"mode":"2x2","on":true}})";
    const QByteArray mixer = R"({"value":[[-100,0],[1,2]]})";
    const QByteArray whole = document(usb, mixer);
    const auto expect = [](const char *name, const QByteArray &now, const QByteArray &then,
                           const QStringList &changes) { QTest::newRow(name) << now << then << changes; };
    expect("nothing", whole, whole, {});
    expect("values of each kind", whole,
           document(R"({"param":"/system/usb","value":{"gain":4,"mode":"1x1","on":false}})", mixer),
           {QStringLiteral("USB: gain: -3 > 4"), QStringLiteral("USB: mode: 2x2 > 1x1"),
            QStringLiteral("USB: on: true > false")});
    expect("in a list of lists", whole, document(usb, R"({"value":[[-100,0],[1,-20]]})"),
           {QStringLiteral("Mix 2/2: 2 > -20")});
    expect("not there before", document("{}", mixer),
           document(R"({"param":"/preset/dsp/dante_rx","value":[{"limiter":{"static_ip":5}}]})", mixer),
           {QStringLiteral("Dante RX 1: limiter static IP:  > 5")});
    expect("no settings", whole, document(R"({"param":"/control/reboot","value":true})", mixer), {});
    QByteArray older = whole;
    expect("the head", whole, older.replace("1.0</V>", "0.9</V>"), {});
    expect("left out", whole, document("{}", mixer), {});
    expect("plain text", document("one", "two"), document("<![CDATA[<b>]]>", "two"),
           {QStringLiteral("USB: one > <b>")});
    expect("a document type", whole,
           "<!DOCTYPE S [<!ENTITY e \"eeee\">]>" + document("&e;&e;", mixer).mid(21), {});
    expect("no document", whole, QByteArray("\x00\xff<<", 4), {});
    expect("cut off", whole, document("other", mixer).left(50), {});
}

void SnapshotChangesTest::namesWhatDiffers()
{
    QFETCH(const QByteArray, now);
    QFETCH(const QByteArray, then);
    QStringList found;
    for (const SnapshotChange &change : snapshotChanges(now, then))
        found.append(QStringLiteral("%1: %2 > %3").arg(settingName(change.path), change.now, change.then));
    QTEST(found, "changes");
}

QTEST_APPLESS_MAIN(SnapshotChangesTest)
#include "tst_snapshot_changes.moc"
