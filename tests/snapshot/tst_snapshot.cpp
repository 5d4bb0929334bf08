#include "protocol/paths.h"
#include "snapshot/snapshot_reader.h"
#include "snapshot/snapshot_writer.h"

#include <QElapsedTimer>
#include <QTest>

namespace {

SnapshotIdentity identity()
{
    return {QStringLiteral("5"), QStringLiteral("TarnKBX"), 1002003, 1000000};
}

QJsonObject reply(const QString &param, const QJsonValue &value)
{
    return {{QStringLiteral("param"), param}, {QStringLiteral("value"), value}};
}

/// A document that passes its check, with @p more in the place of @p instead.
QByteArray document(const QByteArray &instead = QByteArray(), const QByteArray &more = QByteArray(),
                    const QByteArray &data = QByteArray())
{
    QByteArray info = "<FILE_VER>1.0</FILE_VER><PRODUCT_NAME>TarnKBX</PRODUCT_NAME>"
                      "<PRODUCT_MCU_VER>v1.2.3</PRODUCT_MCU_VER>";
    if (!instead.isEmpty())
        info.replace(instead, more);
    return "<SNAPSHOT_FILE><SNAPSHOT_INFO>" + info + "</SNAPSHOT_INFO><SNAPSHOT_DATA>" + data
        + "</SNAPSHOT_DATA></SNAPSHOT_FILE>";
}

/// Each element of the data, as "name" or "name=param".
QByteArray elementsOf(const QByteArray &snapshot, bool *found = nullptr)
{
    QByteArrayList names;
    const bool any = readSnapshot(snapshot, [&names](const SnapshotElement &element) {
        const QString param = element.content.value(QLatin1String("param")).toString();
        names.append(element.name.toUtf8() + (element.section ? '=' + param.toUtf8() : QByteArray()));
        return true;
    });
    if (found)
        *found = any;
    return names.join(' ');
}

QByteArray repeated(int count, const char *pattern)
{
    QByteArray text;
    for (int i = 0; i < count; ++i)
        text += QByteArray(pattern).replace('#', QByteArray::number(i));
    return text;
}

} // namespace

/// Snapshot documents: as written, as checked, as read, and as an enemy would make them.
class SnapshotTest : public QObject
{
    Q_OBJECT

private slots:
    void writesTheDocument()
    {
        SectionCaches caches;
        caches[Section::Usb] = reply(path::Usb, QStringLiteral("a<b>&\"c\""));
        caches.setValue(Section::Mixer, QJsonArray{QJsonArray{-100, 0}});
        QByteArray expected = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<SNAPSHOT_FILE>\n"
                              "    <SNAPSHOT_INFO>\n        <FILE_VER>1.0</FILE_VER>\n"
                              "        <PRODUCT_ID>5</PRODUCT_ID>\n"
                              "        <PRODUCT_NAME>TarnKBX</PRODUCT_NAME>\n"
                              "        <PRODUCT_MCU_VER>v1.2.3</PRODUCT_MCU_VER>\n    </SNAPSHOT_INFO>\n"
                              "    <SNAPSHOT_DATA>\n";
        for (const QByteArray &section :
             QByteArray("SYSTEM_NETWORK SYSTEM_NOTIFICATIONS SYSTEM_METERING SYSTEM_FUNC_GEN SYSTEM_USB "
                        "SYSTEM_BLUETOOTH SYSTEM_VOICE_CUE PRESET_RX PRESET_TX PRESET_USB_PLAYBACK "
                        "PRESET_USB_RECORD PRESET_BT_SINK PRESET_BT_SOURCE PRESET_VOICE_CUE PRESET_MIXER")
                 .split(' ')) {
            QByteArray text = "{}";
            if (section == "SYSTEM_USB")
                text = "{&quot;param&quot;:&quot;/system/usb&quot;,"
                       "&quot;value&quot;:&quot;a&lt;b&gt;&amp;\\&quot;c\\&quot;&quot;}";
            else if (section == "PRESET_MIXER")
                text = "{&quot;value&quot;:[[-100,0]]}";
            expected += "        <" + section + '>' + text + "</" + section + ">\n";
        }
        expected += "    </SNAPSHOT_DATA>\n</SNAPSHOT_FILE>\n";
        const QByteArray written = writeSnapshot(caches, identity());
        QCOMPARE(written, expected);
        QVERIFY(isSnapshotFor(written, identity()));
    }

    void checksTheHeader_data()
    {
        QTest::addColumn<QByteArray>("snapshot");
        QTest::addColumn<bool>("accepted");
        const auto row = [](const char *name, bool accepted, const char *instead, const char *more) {
            QTest::newRow(name) << document(instead, more) << accepted;
        };
        row("as written", true, "", "");
        row("later file version", true, ">1.0<", ">2<");
        row("earlier file version", false, ">1.0<", ">0.9<");
        row("file version no number", false, ">1.0<", ">x<");
        row("fulfilled once", true, "</FILE_VER>", "</FILE_VER><FILE_VER>0</FILE_VER>");
        row("other product", false, ">TarnKBX<", ">tarnkbx<");
        row("no first character", false, ">v1.2.3<", ">1.2.3<");
        row("old firmware", false, ">v1.2.3<", ">v0.999.999<");
        row("firmware beyond all numbers", false, ">v1.2.3<", ">v9999.0.0<");
        row("text in two parts", false, ">1.0<", ">1.0<![CDATA[0]]><");
        QTest::newRow("nothing") << QByteArray() << false;
        QTest::newRow("comment, processing") << "<!-- < --><?p <?>" + document() << true;
        QTest::newRow("byte order mark") << "\xef\xbb\xbf" + document() << true;
        QTest::newRow("Latin-1") << "<?xml version='1.0' encoding='ISO-8859-1'?>"
                + document("</FILE_VER>", "</FILE_VER>\xfc")
                                 << false;
        QTest::newRow("cut off later") << document().chopped(30) << true;
    }

    void checksTheHeader()
    {
        QFETCH(QByteArray, snapshot);
        QTEST(isSnapshotFor(snapshot, identity()), "accepted");
    }

    void refusesWhatWouldGrow_data()
    {
        QTest::addColumn<QByteArray>("snapshot");
        QTest::newRow("entity of entities")
            << "<!DOCTYPE a [<!ENTITY d 'ha'><!ENTITY e '&d;&d;&d;&d;'>]>" + document("", "", "&e;");
        QTest::newRow("large") << document("", "", QByteArray(64 * 1024, ' '));
        const QString wide = QString::fromLatin1(document());
        QTest::newRow("UTF-16") << QByteArray("\xff\xfe", 2)
                + QByteArray(reinterpret_cast<const char *>(wide.utf16()), wide.size() * 2);
    }

    void endsSoon_data()
    {
        QTest::addColumn<QByteArray>("data");
        QTest::newRow("attributes") << "<A " + repeated(6000, "a#='' ") + "/>";
        QTest::newRow("elements within elements") << repeated(3000, "<A xmlns:a#='b'>");
        QTest::newRow("open declarations") << QByteArray("<!A").repeated(20000);
    }

    void endsSoon()
    {
        QFETCH(QByteArray, data);
        QElapsedTimer clock;
        clock.start();
        bool found = false;
        elementsOf(document("", "", data), &found);
        QVERIFY(found);
        QVERIFY2(clock.elapsed() < 5000, qPrintable(QString::number(clock.elapsed())));
    }

    void handsOutALargeTextAFewTimes()
    {
        const QByteArray elements = elementsOf(
            document("", "", "<A>" + QByteArray(40000, 'x') + QByteArray("<A/>").repeated(1000)));
        QVERIFY2(elements.count('A') < 10, elements);
    }

    void refusesWhatWouldGrow()
    {
        QFETCH(QByteArray, snapshot);
        QVERIFY(!isSnapshotFor(snapshot, identity()));
        bool found = true;
        elementsOf(snapshot, &found);
        QVERIFY(!found);
    }

    void readsElements_data()
    {
        QTest::addColumn<QByteArray>("data");
        QTest::addColumn<QByteArray>("elements");
        const auto row = [](const char *name, const char *data, const char *elements) {
            QTest::newRow(name) << QByteArray(data) << QByteArray(elements) + " SNAPSHOT_DATA SNAPSHOT_FILE";
        };
        const char usb[] = R"(<SYSTEM_USB>{"param":"/u"}</SYSTEM_USB>)";
        row("unknown", "<OTHER>{}</OTHER>", "OTHER");
        row("no JSON", "<SYSTEM_USB>{</SYSTEM_USB><PRESET_RX>[1]</PRESET_RX>", "SYSTEM_USB= PRESET_RX=");
        row("doubled", (QByteArray(usb) + usb), "SYSTEM_USB=/u SYSTEM_USB=/u");
        row("the text of the element before", (QByteArray(usb) + "<PRESET_TX/>"),
            "SYSTEM_USB=/u PRESET_TX=/u");
        row("nested and out of order", ("<PRESET_MIXER>" + QByteArray(usb) + "</PRESET_MIXER>"),
            "SYSTEM_USB=/u PRESET_MIXER=/u");
        row("broken off", (QByteArray(usb) + "</A>"), "SYSTEM_USB=/u");
    }

    void readsElements()
    {
        QFETCH(QByteArray, data);
        QFETCH(QByteArray, elements);
        if (data.endsWith("</A>"))
            elements.chop(int(qstrlen(" SNAPSHOT_DATA SNAPSHOT_FILE")));
        QCOMPARE(elementsOf(document("", "", data)), elements);
    }

    void standsDamage()
    {
        SectionCaches caches;
        caches[Section::Bluetooth] = reply(path::Bluetooth, QString::fromUtf8("B\xc3\xbcro"));
        const QByteArray whole = writeSnapshot(caches, identity());
        const int dataStart = whole.indexOf("<SNAPSHOT_DATA>");
        const QByteArray elements = elementsOf(whole);
        for (int at = 0; at < whole.size(); ++at) {
            bool found = false;
            const QByteArray cutOff = elementsOf(whole.left(at), &found);
            QVERIFY(elements.startsWith(cutOff));
            QCOMPARE(found, at >= dataStart + int(qstrlen("<SNAPSHOT_DATA>")));
            for (int bits : {0x01, 0x80}) {
                QByteArray flipped = whole;
                flipped[at] = char(flipped.at(at) ^ bits);
                elementsOf(flipped);
                isSnapshotFor(flipped, identity());
            }
        }
    }
};

QTEST_APPLESS_MAIN(SnapshotTest)
#include "tst_snapshot.moc"
