#include "dsp/matrix_mixer_form.h"
#include "widgets/vm_dial.h"

#include <QAccessible>
#include <QJsonArray>
#include <QJsonDocument>
#include <QSpinBox>
#include <QTableWidget>
#include <QTest>
#include <QToolTip>

namespace {

QStringList labels(const char *text)
{
    return QString::fromLatin1(text).split(QLatin1Char(','));
}

/// The names of all that a screen reader finds, one a line.
QString namesIn(QAccessibleInterface *part)
{
    QString names = part->text(QAccessible::Name) + QLatin1Char('\n');
    for (int child = 0; child < part->childCount(); ++child)
        names += namesIn(part->child(child));
    return names;
}

} // namespace

/// The mixer: what is written into its section, what it shows of odd ones, and how the user gets around in
/// it.
class MatrixMixerTest : public QObject
{
    Q_OBJECT

private slots:
    void storesOneCrosspoint();
    void showsItsSection_data();
    void showsItsSection();
    void refusesTonesOutOfRange();
    void leadsTheUserAround();
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

void MatrixMixerTest::refusesTonesOutOfRange()
{
    const QJsonObject section;
    MatrixMixerForm form(labels("R1"), labels("T1"), &section);
    form.show();
    QVERIFY(QTest::qWaitForWindowActive(&form));
    auto *tone = form.findChild<QSpinBox *>(QStringLiteral("tone_gen_level_spinBox"));
    tone->setFocus();
    tone->selectAll();
    QTest::keyClicks(tone, QStringLiteral("5"));
    QTest::keyClick(tone, Qt::Key_Return);
    QTRY_COMPARE(QToolTip::text(),
                 QStringLiteral("5 is not possible: enter a whole number from -100 to 0 dB."));
}

void MatrixMixerTest::leadsTheUserAround()
{
    const QJsonObject section;
    MatrixMixerForm form(labels("R1,R2,R3,R4,U1,U2,B1,B2,Cue,Tone"), labels("T1,T2,T3,T4,U|1,U|2,B|1"),
                         &section);
    auto *table = form.findChild<QTableWidget *>(QStringLiteral("tableWidget"));
    const auto dial = [table](int source, int sink) {
        return table->cellWidget(source + 1, sink + 1)->findChild<VmDial *>();
    };
    QCOMPARE(form.size(), QSize(601, 690));
    form.resize(400, 400);
    form.show();
    form.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&form));
    form.onUsbMode(1, 0); // the eighth source is not available
    dial(0, 0)->setFocus();
    for (int step = 0; step < 7; ++step)
        QTest::keyClick(form.focusWidget(), Qt::Key_Down);
    QTest::keyClick(form.focusWidget(), Qt::Key_Right);
    QCOMPARE(form.focusWidget(), dial(8, 1));
    // In sight, and so are the headers.
    const auto placeOf = [table](const QWidget *part) {
        return QRect(part->mapTo(table->viewport(), QPoint()), part->size());
    };
    QVERIFY(table->viewport()->rect().adjusted(153, 50, 0, 0).contains(placeOf(dial(8, 1))));
    QCOMPARE(placeOf(table->cellWidget(0, 2)).y(), 0);
    QCOMPARE(placeOf(table->cellWidget(9, 0)).x(), 0);
    QTest::keyClick(form.focusWidget(), Qt::Key_PageUp);
    QCOMPARE(dial(8, 1)->Val(), 6.0);

    // One stop of the tab key, from which it goes on to the last row's header.
    QTest::keyClick(form.focusWidget(), Qt::Key_Tab);
    QCOMPARE(form.focusWidget()->objectName(), QStringLiteral("tone_gen_en_checkBox"));
    QTest::keyClick(form.focusWidget(), Qt::Key_Backtab);
    QCOMPARE(form.focusWidget(), dial(8, 1));

    const QString names = namesIn(QAccessible::queryAccessibleInterface(&form));
    for (const char *name : {"R1 to U 1, 0 dB", "Cue to T2, 6 dB", "Clear", "Frequency", "Level", "Enable"})
        QVERIFY2(names.contains(QLatin1Char('\n') + QLatin1String(name) + QLatin1Char('\n')), name);
}

QTEST_MAIN(MatrixMixerTest)
#include "tst_matrix_mixer.moc"
