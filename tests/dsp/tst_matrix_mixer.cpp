#include "dsp/mixer_section.h"
#include "dsp/overlay.h"
#include "tests/dsp/mixer_probe.h"

#include <QJsonDocument>
#include <QLabel>
#include <QPushButton>
#include <QTest>

/// The mixer's grid: what it shows of its section, and what it reports of the hand.
class MatrixMixerTest : public QObject
{
    Q_OBJECT

private slots:
    void headsRowsAndColumns_data();
    void headsRowsAndColumns();
    void hasItsSizes();
    void showsItsSection_data();
    void showsItsSection();
    void reportsAChangeByHandOnce();
    void cellKeepsOnlyItsOwn();
    void clearsThroughTheSection_data();
    void clearsThroughTheSection();
    void closingCancelsTheReload();
    void followsTheUsbMode();
};

void MatrixMixerTest::headsRowsAndColumns_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("column");
    QTest::addColumn<QStringList>("texts");
    QTest::addColumn<QString>("color");
    const auto add = [](int row, int column, const QStringList &texts, const QString &color) {
        QTest::newRow(qPrintable(texts.join(QLatin1Char(' ')))) << row << column << texts << color;
    };
    const QString usb = QStringLiteral("background-color: #ff73caeb;");
    const QString bluetooth = QStringLiteral("background-color: #ff63e984;");
    add(1, 0, {QStringLiteral("Net RX 1")}, {});
    add(4, 0, {QStringLiteral("Net RX 4")}, {});
    add(5, 0, {QStringLiteral("USB IN 1")}, usb);
    add(6, 0, {QStringLiteral("USB IN 2")}, usb);
    add(7, 0, {QStringLiteral("BT IN 1")}, bluetooth);
    add(8, 0, {QStringLiteral("BT IN 2")}, bluetooth);
    add(9, 0, {QStringLiteral("Voice Cue")}, QStringLiteral("background-color: #ffe96363;"));
    add(10, 0, {QStringLiteral("Tone Generator:"), QStringLiteral("Frequency"), QStringLiteral("Level")},
        QStringLiteral("background-color: #fff19185;"));
    add(0, 1, {QStringLiteral("Net"), QStringLiteral("TX 1")}, {});
    add(0, 4, {QStringLiteral("Net"), QStringLiteral("TX 4")}, {});
    add(0, 5, {QStringLiteral("USB"), QStringLiteral("OUT 1")}, usb);
    add(0, 6, {QStringLiteral("USB"), QStringLiteral("OUT 2")}, usb);
    add(0, 7, {QStringLiteral("BT"), QStringLiteral("OUT 1")}, bluetooth);
}

void MatrixMixerTest::headsRowsAndColumns()
{
    QFETCH(int, row);
    QFETCH(int, column);
    const MixerProbe probe;
    const QWidget *header = probe.table.cellWidget(row, column);
    QStringList texts;
    for (const QLabel *label : header->findChildren<QLabel *>())
        texts << label->text();
    QTEST(texts, "texts");
    QTEST(header->styleSheet(), "color");
}

void MatrixMixerTest::hasItsSizes()
{
    MixerProbe probe;
    probe.form.show();
    QVERIFY(QTest::qWaitForWindowExposed(&probe.form));
    QCOMPARE(probe.form.size(), QSize(601, 690));
    QCOMPARE(probe.table.viewport()->size(), QSize(601, 690)); // nothing left to scroll
    QCOMPARE(QSize(probe.table.columnWidth(0), probe.table.rowHeight(0)), QSize(153, 50));
    QCOMPARE(QSize(probe.table.columnWidth(7), probe.table.rowHeight(10)), QSize(64, 64));
    QCOMPARE(probe.cell(9, 6).size(), QSize(64, 64));
    QCOMPARE(probe.table.cellWidget(0, 0)->size(), QSize(153, 50));
    QVERIFY(probe.tone().height() <= 76);
    QCOMPARE(probe.tone().width(), 154);
}

void MatrixMixerTest::showsItsSection_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<double>("first"); // source 0, sink 0
    QTest::addColumn<double>("other"); // source 2, sink 5
    QTest::newRow("complete") << QJsonDocument(mixerSection()).toJson(QJsonDocument::Compact) << 0.0 << -52.0;
    QTest::newRow("no value") << QByteArray("{}") << 0.0 << 0.0;
    QTest::newRow("value is a number") << QByteArray(R"({"value":7})") << 0.0 << 0.0;
    QTest::newRow("hole") << QByteArray(R"({"value":[[-1],null,"x",{},7,[-3,-4]]})") << -1.0 << 0.0;
    QTest::newRow("other types") << QByteArray(R"({"value":[["-1"],[],[],[],[],[0,0,true]]})") << 0.0 << 0.0;
    QTest::newRow("too many") << QByteArray(
        R"({"value":[[-2,0,0,0,0,0,0,0,0,0,0,0],[],[],[],[],[0,0,-8],[],[],[]]})")
                              << -2.0 << -8.0;
}

void MatrixMixerTest::showsItsSection()
{
    QFETCH(QByteArray, json);
    const QJsonObject section = QJsonDocument::fromJson(json).object();
    MixerProbe probe(section);
    QTEST(probe.dial(0, 0).Val(), "first");
    QTEST(probe.dial(2, 5).Val(), "other");

    probe.section = QJsonObject{{QStringLiteral("value"), QJsonArray()}};
    probe.form.onDataChanged();
    QCOMPARE(probe.dialsAt(0), 70);
    probe.section = section;
    probe.form.onDataChanged();
    QTEST(probe.dial(2, 5).Val(), "other");
    QVERIFY(probe.changes.isEmpty());
}

void MatrixMixerTest::reportsAChangeByHandOnce()
{
    MixerProbe probe(mixerSection());
    probe.form.show();

    QTest::keyClick(&probe.dial(2, 5), Qt::Key_Up);
    QCOMPARE(probe.changes, QVector<CrosspointRecord>({{{2, 5}, {0, -51.0}}}));
    QCOMPARE(probe.changes.first().second.second.type(), QVariant::Double);
    QCOMPARE(probe.section, mixerSection());
}

void MatrixMixerTest::cellKeepsOnlyItsOwn()
{
    MatrixMixerCell cell(3, 4);
    VmDial &dial = *cell.findChild<VmDial *>(QStringLiteral("vmdial"));
    int emitted = 0;
    connect(&cell, &MatrixMixerCell::uiChanged, this, [&emitted] { ++emitted; });
    QCOMPARE(dial.Val(), -100.0);

    cell.onChanged({{4, 3}, {0, -1}});
    cell.onChanged({{3, 0}, {0, -1}});
    cell.onChanged({{3, 4}, {1, -1}});
    QCOMPARE(dial.Val(), -100.0);
    cell.onChanged({{3, 4}, {0, -7}});
    QCOMPARE(dial.Val(), -7.0);
    QCOMPARE(emitted, 0);
}

void MatrixMixerTest::clearsThroughTheSection_data()
{
    QTest::addColumn<QString>("button");
    QTest::newRow("Clear") << QStringLiteral("reset_pushButton");
    QTest::newRow("Default") << QStringLiteral("default_pushButton");
}

void MatrixMixerTest::clearsThroughTheSection()
{
    QFETCH(QString, button);
    MixerProbe probe(mixerSection());
    probe.form.setReloadDelay(30);
    connect(&probe.form, &MatrixMixerForm::uiMixChanged, &probe.form,
            [&probe](const CrosspointRecord &record) {
                QVERIFY(storeCrosspoint(probe.section, record.first.first, record.first.second,
                                        record.second.second.toInt()));
            });
    probe.form.show();
    auto *pushed = probe.form.findChild<QPushButton *>(button);
    QVERIFY(!pushed->isDefault() && !pushed->autoDefault());
    QCOMPARE(pushed->isHidden(), button.startsWith(QLatin1String("default")));

    pushed->click();
    QCOMPARE(probe.changes.size(), 70);
    QCOMPARE(probe.changes.at(1), CrosspointRecord({0, 1}, {0, -100}));
    QCOMPARE(probe.changes.last(), CrosspointRecord({9, 6}, {0, -100}));
    QCOMPARE(probe.dialsAt(-100), 0); // not before the reload
    QTRY_COMPARE(probe.dialsAt(-100), 70);
    QCOMPARE(probe.changes.size(), 70);
}

void MatrixMixerTest::closingCancelsTheReload()
{
    auto section = std::make_unique<QJsonObject>(mixerSection());
    QPointer<MatrixMixerForm> form
        = new MatrixMixerForm(MixerProbe::sources(), MixerProbe::sinks(), section.get());
    form->setReloadDelay(0);
    connect(form, &BlockEditor::close, form, &QObject::deleteLater);
    form->onUiReset();
    QTest::keyClick(form, Qt::Key_Escape);
    delete form;
    section.reset(); // a reload now would read freed memory
    bool later = false;
    QTimer::singleShot(0, this, [&later] { later = true; });
    QTRY_VERIFY(later);
}

void MatrixMixerTest::followsTheUsbMode()
{
    MixerProbe probe(mixerSection());
    probe.form.show();
    QVERIFY(QTest::qWaitForWindowExposed(&probe.form));
    const auto disabledCells = [&probe] {
        int count = 0;
        for (const MatrixMixerCell *cell : probe.form.findChildren<MatrixMixerCell *>())
            count += cell->isEnabled() ? 0 : 1;
        return count;
    };
    probe.cell(0, 0).setUnavailableFlags(0x02);

    probe.form.onUsbMode(1, 0);
    QCOMPARE(disabledCells(), 7 + 10 - 1 + 1);
    QVERIFY(!probe.cell(7, 0).isEnabled() && !probe.cell(9, 6).isEnabled());
    QTRY_COMPARE(probe.form.findChildren<Overlay *>().size(), 17);
    QTest::keyClick(&probe.dial(7, 0), Qt::Key_Up);
    QVERIFY(probe.changes.isEmpty());
    probe.section = QJsonObject();
    probe.form.onDataChanged();
    QCOMPARE(probe.dial(7, 3).Val(), 0.0); // device values still arrive

    probe.cell(7, 6).setUnavailableFlags(0x81);
    probe.form.onUsbMode(0, 1);
    QCOMPARE(disabledCells(), 2);
    QCOMPARE(int(probe.cell(7, 6).unavailableFlags()), 0x80);

    probe.cell(7, 6).setUnavailableFlags(0);
    probe.form.onUsbMode(0, 5);
    QCOMPARE(disabledCells(), 1);
}

QTEST_MAIN(MatrixMixerTest)
#include "tst_matrix_mixer.moc"
