#include "dsp/matrix_mixer_cell.h"
#include "dsp/matrix_mixer_form.h"
#include "dsp/overlay.h"
#include "dsp/tone_gen_header_cell.h"
#include "widgets/vm_dial.h"

#include <QCheckBox>
#include <QJsonArray>
#include <QJsonDocument>
#include <QLabel>
#include <QPushButton>
#include <QSpinBox>
#include <QTableWidget>
#include <QTest>

namespace {

QStringList parts(const char *text)
{
    return QString::fromLatin1(text).split(QLatin1Char(','));
}

/// Crosspoint (source, sink) is -(10 * sink + source) dB.
QJsonObject startSection()
{
    QJsonArray value;
    for (int sink = 0; sink < mixerSinks; ++sink) {
        QJsonArray levels;
        for (int source = 0; source < mixerSources; ++source)
            levels.append(-(10 * sink + source));
        value.append(levels);
    }
    return {{QStringLiteral("value"), value}};
}

} // namespace

/// The mixer: what it shows of its section and of the tone generator, and what it reports of the hand.
class MatrixMixerTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void storesOneCrosspoint_data();
    void storesOneCrosspoint();
    void headsRowsAndColumns();
    void showsItsSection_data();
    void showsItsSection();
    void reportsAChangeByHandOnce();
    void clearsThroughTheSection_data();
    void clearsThroughTheSection();
    void followsTheUsbMode();
    void showsTheTonesValuesSilently();

private:
    MatrixMixerCell &cell(int source, int sink) const
    {
        return *qobject_cast<MatrixMixerCell *>(m_table->cellWidget(source + 1, sink + 1));
    }
    VmDial &dial(int source, int sink) const { return *cell(source, sink).findChild<VmDial *>(); }
    int dialsAt(double dB) const;
    int disabledCells() const;
    QSpinBox &box(const char *name) const { return *m_form->findChild<QSpinBox *>(QLatin1String(name)); }

    QJsonObject m_section;
    QScopedPointer<MatrixMixerForm> m_form;
    QTableWidget *m_table = nullptr;
    QVector<CrosspointRecord> m_changes;
    QVector<ToneRecord> m_toneChanges;
};

void MatrixMixerTest::init()
{
    m_section = startSection();
    m_form.reset(new MatrixMixerForm(
        parts("Net RX 1,Net RX 2,Net RX 3,Net RX 4,USB IN 1,USB IN 2,BT IN 1,BT IN 2,Voice Cue,Tone Gen"),
        parts("Net|TX 1,Net|TX 2,Net|TX 3,Net|TX 4,USB|OUT 1,USB|OUT 2,BT|OUT 1"), &m_section));
    m_table = m_form->findChild<QTableWidget *>(QStringLiteral("tableWidget"));
    m_changes.clear();
    m_toneChanges.clear();
    connect(m_form.get(), &MatrixMixerForm::uiMixChanged, this,
            [this](const CrosspointRecord &record) { m_changes.append(record); });
    connect(m_form.get(), &MatrixMixerForm::uiTonGenChanged, this,
            [this](const ToneRecord &record) { m_toneChanges.append(record); });
    m_form->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_form.get()));
}

int MatrixMixerTest::dialsAt(double dB) const
{
    const auto dials = m_form->findChildren<VmDial *>();
    return int(std::count_if(dials.begin(), dials.end(), [dB](const VmDial *d) { return d->Val() == dB; }));
}

int MatrixMixerTest::disabledCells() const
{
    const auto cells = m_form->findChildren<MatrixMixerCell *>();
    return int(std::count_if(cells.begin(), cells.end(), [](auto *each) { return !each->isEnabled(); }));
}

void MatrixMixerTest::storesOneCrosspoint_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<int>("source");
    QTest::addColumn<int>("sink");
    QTest::addColumn<QByteArray>("after"); // the same: refused
    const QByteArray two = R"({"value":[[1,2],[3,4]]})";
    QTest::newRow("in place") << two << 1 << 0 << QByteArray(R"({"value":[[1,-9],[3,4]]})");
    QTest::newRow("missing sink") << two << 0 << 3 << QByteArray(R"({"value":[[1,2],[3,4],[],[-9]]})");
    QTest::newRow("no array") << QByteArray(R"({"result":"OK","value":"x"})") << 0 << 0
                              << QByteArray(R"({"result":"OK","value":[[-9]]})");
    QTest::newRow("sink too high") << two << 0 << 7 << two;
    QTest::newRow("negative") << two << -1 << 0 << two;
}

void MatrixMixerTest::storesOneCrosspoint()
{
    QFETCH(QByteArray, before);
    QFETCH(int, source);
    QFETCH(int, sink);
    QFETCH(QByteArray, after);
    QJsonObject section = QJsonDocument::fromJson(before).object();
    QCOMPARE(storeCrosspoint(section, source, sink, -9), before != after);
    QCOMPARE(QJsonDocument(section).toJson(QJsonDocument::Compact), after);
}

void MatrixMixerTest::headsRowsAndColumns()
{
    const auto describe = [this](int row, int column) {
        const QWidget *header = m_table->cellWidget(row, column);
        QString text;
        for (const QLabel *label : header->findChildren<QLabel *>())
            text += label->text() + QLatin1Char('|');
        return text + header->styleSheet().remove(QLatin1String("background-color: "));
    };
    QStringList headers;
    for (int row = 1; row <= mixerSources; ++row)
        headers << describe(row, 0);
    for (int column = 1; column <= mixerSinks; ++column)
        headers << describe(0, column);
    QCOMPARE(headers,
             parts("Net RX 1|,Net RX 2|,Net RX 3|,Net RX 4|,USB IN 1|#ff73caeb;,USB IN 2|#ff73caeb;,"
                   "BT IN 1|#ff63e984;,BT IN 2|#ff63e984;,Voice Cue|#ffe96363;,"
                   "Tone Generator:|Frequency|Level|#fff19185;,"
                   "Net|TX 1|,Net|TX 2|,Net|TX 3|,Net|TX 4|,USB|OUT 1|#ff73caeb;,USB|OUT 2|#ff73caeb;,"
                   "BT|OUT 1|#ff63e984;"));
    QCOMPARE(m_form->size(), QSize(601, 690));
    QCOMPARE(m_table->viewport()->size(), QSize(601, 690)); // nothing is left to scroll
}

void MatrixMixerTest::showsItsSection_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<double>("first"); // source 0, sink 0
    QTest::addColumn<double>("other"); // source 2, sink 5
    QTest::newRow("complete") << QJsonDocument(startSection()).toJson() << 0.0 << -52.0;
    QTest::newRow("no value") << QByteArray("{}") << 0.0 << 0.0;
    QTest::newRow("holes") << QByteArray(R"({"value":[[-1],null,"x",{},7,[-3,-4]]})") << -1.0 << 0.0;
    QTest::newRow("too many") << QByteArray(
        R"({"value":[[-2],[],[],[],[],[0,0,-8,0,0,0,0,0,0,0,0],[],[],[]]})")
                              << -2.0 << -8.0;
}

void MatrixMixerTest::showsItsSection()
{
    QFETCH(QByteArray, json);
    m_section = QJsonObject{{QStringLiteral("value"), 1}};
    m_form->onDataChanged();
    QCOMPARE(dialsAt(0), 70);
    m_section = QJsonDocument::fromJson(json).object();
    m_form->onDataChanged();
    QTEST(dial(0, 0).Val(), "first");
    QTEST(dial(2, 5).Val(), "other");
    QVERIFY(m_changes.isEmpty());
}

void MatrixMixerTest::reportsAChangeByHandOnce()
{
    QTest::keyClick(&dial(2, 5), Qt::Key_Up);
    QCOMPARE(m_changes, QVector<CrosspointRecord>({{{2, 5}, {0, -51.0}}}));
    QCOMPARE(m_section, startSection());
    cell(2, 5).onChanged({{2, 5}, {1, -3}}); // no such parameter
    QCOMPARE(dial(2, 5).Val(), -51.0);
}

void MatrixMixerTest::clearsThroughTheSection_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<bool>("shown");
    QTest::newRow("Clear") << QStringLiteral("reset_pushButton") << true;
    QTest::newRow("Default") << QStringLiteral("default_pushButton") << false;
}

void MatrixMixerTest::clearsThroughTheSection()
{
    QFETCH(QString, button);
    m_form->setReloadDelay(30);
    connect(m_form.get(), &MatrixMixerForm::uiMixChanged, this, [this](const CrosspointRecord &record) {
        QVERIFY(storeCrosspoint(m_section, record.first.first, record.first.second,
                                record.second.second.toInt()));
    });
    auto *pushed = m_form->findChild<QPushButton *>(button);
    QTEST(pushed->isVisible(), "shown");
    QVERIFY(!pushed->isDefault() && !pushed->autoDefault());

    pushed->click();
    QCOMPARE(m_changes.size(), 70);
    QCOMPARE(m_changes.at(1), CrosspointRecord({0, 1}, {0, -100}));
    QCOMPARE(dialsAt(-100), 0); // not before the reload
    QTRY_COMPARE(dialsAt(-100), 70);
    QCOMPARE(m_changes.size(), 70);
}

void MatrixMixerTest::followsTheUsbMode()
{
    cell(0, 0).setUnavailableFlags(0x02);
    m_form->onUsbMode(1, 0);
    QCOMPARE(disabledCells(), 7 + 10 - 1 + 1);
    QVERIFY(!cell(7, 0).isEnabled() && !cell(9, 6).isEnabled());
    QTRY_COMPARE(m_form->findChildren<Overlay *>().size(), 17);
    QTest::keyClick(&dial(7, 0), Qt::Key_Up);
    QVERIFY(m_changes.isEmpty());
    m_section = QJsonObject();
    m_form->onDataChanged();
    QCOMPARE(dial(7, 3).Val(), 0.0); // what the device says still arrives

    cell(7, 6).setUnavailableFlags(0x81);
    m_form->onUsbMode(0, 1);
    QCOMPARE(disabledCells(), 2);
    QCOMPARE(int(cell(7, 6).unavailableFlags()), 0x80);
    cell(7, 6).setUnavailableFlags(0);
    m_form->onUsbMode(0, 5);
    QCOMPARE(disabledCells(), 1);
}

void MatrixMixerTest::showsTheTonesValuesSilently()
{
    m_form->findChild<ToneGenHeaderCell *>()->setRestTime(0);
    for (const ToneRecord &record : {ToneRecord(100, true), ToneRecord(101, 1000), ToneRecord(102, -12)})
        m_form->onToneGenChanged(record);
    m_form->onToneGenChanged({103, 7});
    QVERIFY(m_form->findChild<QCheckBox *>(QStringLiteral("tone_gen_en_checkBox"))->isChecked());
    QCOMPARE(box("tone_gen_freq_spinBox").text(), QStringLiteral("1000 Hz"));
    QCOMPARE(box("tone_gen_level_spinBox").text(), QStringLiteral("-12 dB"));

    // By hand the level comes out, and nothing else had been waiting.
    box("tone_gen_level_spinBox").stepUp();
    QTRY_COMPARE(m_toneChanges, QVector<ToneRecord>({{102, -11}}));
}

QTEST_MAIN(MatrixMixerTest)
#include "tst_matrix_mixer.moc"
