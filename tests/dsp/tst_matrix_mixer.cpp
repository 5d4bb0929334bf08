#include "dsp/matrix_mixer_form.h"
#include "widgets/vm_dial.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QTableWidget>
#include <QTest>

/// The mixer's section: what is written into it, and what the mixer shows of odd ones.
class MatrixMixerTest : public QObject
{
    Q_OBJECT

private slots:
    void storesOneCrosspoint();
    void showsItsSection_data();
    void showsItsSection();
};

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
    QTest::newRow("no value") << QByteArray("{}") << 0.0 << 0.0;
    QTest::newRow("holes") << QByteArray(R"({"value":[[-1],null,"x",{},7,[-3,-4]]})") << -1.0 << 0.0;
    QTest::newRow("too many") << QByteArray(
        R"({"value":[[-2],[],[],[],[],[0,0,-8,0,0,0,0,0,0,0,0],[],[],[]]})")
                              << -2.0 << -8.0;
}

void MatrixMixerTest::showsItsSection()
{
    QFETCH(QByteArray, json);
    const auto labels = [](const char *text) { return QString::fromLatin1(text).split(QLatin1Char(',')); };
    QJsonObject section{{QStringLiteral("value"), 1}};
    MatrixMixerForm form(labels("R1,R2,R3,R4,U1,U2,B1,B2,Cue,Tone"), labels("T1,T2,T3,T4,U|1,U|2,B|1"),
                         &section);
    connect(&form, &MatrixMixerForm::uiMixChanged, [] { QFAIL("shown, not changed by the user"); });
    const auto level = [&form](int source, int sink) {
        const auto *table = form.findChild<QTableWidget *>(QStringLiteral("tableWidget"));
        return table->cellWidget(source + 1, sink + 1)->findChild<VmDial *>()->Val();
    };
    QCOMPARE(level(2, 5), 0.0);
    section = QJsonDocument::fromJson(json).object();
    form.onDataChanged();
    QTEST(level(0, 0), "first");
    QTEST(level(2, 5), "other");
}

QTEST_MAIN(MatrixMixerTest)
#include "tst_matrix_mixer.moc"
