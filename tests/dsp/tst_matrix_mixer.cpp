#include "dsp/matrix_mixer_cell.h"
#include "dsp/matrix_mixer_form.h"
#include "dsp/overlay.h"
#include "widgets/vm_dial.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QTableWidget>
#include <QTest>

namespace {

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

/// The mixer: what it shows of its section, and what it reports of the hand.
class MatrixMixerTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void storesOneCrosspoint();
    void showsItsSection_data();
    void showsItsSection();
    void followsTheUsbMode();

private:
    MatrixMixerCell &cell(int source, int sink) const
    {
        return *qobject_cast<MatrixMixerCell *>(m_table->cellWidget(source + 1, sink + 1));
    }
    VmDial &dial(int source, int sink) const { return *cell(source, sink).findChild<VmDial *>(); }
    int disabledCells() const;

    QJsonObject m_section;
    QScopedPointer<MatrixMixerForm> m_form;
    QTableWidget *m_table = nullptr;
    QVector<CrosspointRecord> m_changes;
};

void MatrixMixerTest::init()
{
    m_section = startSection();
    const auto labels = [](const char *text) { return QString::fromLatin1(text).split(QLatin1Char(',')); };
    m_form.reset(new MatrixMixerForm(labels("R1,R2,R3,R4,U1,U2,B1,B2,Cue,Tone"),
                                     labels("T1,T2,T3,T4,U|1,U|2,B|1"), &m_section));
    m_table = m_form->findChild<QTableWidget *>(QStringLiteral("tableWidget"));
    m_changes.clear();
    connect(m_form.get(), &MatrixMixerForm::uiMixChanged, this,
            [this](const CrosspointRecord &record) { m_changes.append(record); });
    m_form->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_form.get()));
}

int MatrixMixerTest::disabledCells() const
{
    const auto cells = m_form->findChildren<MatrixMixerCell *>();
    return int(std::count_if(cells.begin(), cells.end(), [](auto *each) { return !each->isEnabled(); }));
}

void MatrixMixerTest::storesOneCrosspoint()
{
    const auto stored = [](int source, int sink) {
        QJsonObject section = QJsonDocument::fromJson(R"({"value":[[1,2],[3,4]]})").object();
        storeCrosspoint(section, source, sink, -9);
        return QJsonDocument(section).toJson(QJsonDocument::Compact);
    };
    QCOMPARE(stored(1, 0), QByteArray(R"({"value":[[1,-9],[3,4]]})"));
    QCOMPARE(stored(0, 3), QByteArray(R"({"value":[[1,2],[3,4],[],[-9]]})"));
    QCOMPARE(stored(0, 7), QByteArray(R"({"value":[[1,2],[3,4]]})"));
    QCOMPARE(stored(-1, 0), QByteArray(R"({"value":[[1,2],[3,4]]})"));
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
    QCOMPARE(dial(2, 5).Val(), 0.0);
    m_section = QJsonDocument::fromJson(json).object();
    m_form->onDataChanged();
    QTEST(dial(0, 0).Val(), "first");
    QTEST(dial(2, 5).Val(), "other");
    QVERIFY(m_changes.isEmpty());
}

void MatrixMixerTest::followsTheUsbMode()
{
    m_form->onUsbMode(1, 0);
    QCOMPARE(disabledCells(), 7 + 10 - 1);
    QVERIFY(!cell(7, 0).isEnabled() && !cell(9, 6).isEnabled());
    QTRY_COMPARE(m_form->findChildren<Overlay *>().size(), 16);
    QTest::keyClick(&dial(7, 0), Qt::Key_Up);
    QVERIFY(m_changes.isEmpty());
    m_section = QJsonObject();
    m_form->onDataChanged();
    QCOMPARE(dial(7, 3).Val(), 0.0); // what the device says still arrives

    m_form->onUsbMode(0, 1);
    QCOMPARE(disabledCells(), 0);
}

QTEST_MAIN(MatrixMixerTest)
#include "tst_matrix_mixer.moc"
