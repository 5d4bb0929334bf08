#include "devhost/options.h"
#include "devhost/simulated_devices.h"
#include "devhost/tour/file_dialogs.h"
#include "devhost/tour/hands.h"
#include "devhost/tour/other_values.h"
#include "devhost/tour/tour.h"
#include "devhost/upload_port.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QFileDialog>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTemporaryDir>
#include <QTest>
#include <QVBoxLayout>

using namespace devhost;
using namespace devhost::tour;

class TourTest : public QObject
{
    Q_OBJECT

private slots:
    void walksThroughDialogsAndPictures();
    void endsAtFirstFailure_data();
    void endsAtFirstFailure();
    void handsRefuseWhatNobodyCouldClick();
    void handsWorkWidgets();
    void handsChooseFile();
    void changesEveryValue();
    void readsOptions_data();
    void readsOptions();
    void saysWhySimulationEnded();
    void advisesOnPort();

private:
    QString walk(const Steps &steps, bool *success);

    QTemporaryDir m_folder;
};

QString TourTest::walk(const Steps &steps, bool *success)
{
    QString printed;
    QTextStream out(&printed);
    Tour tour(steps, m_folder.path(), &out);
    tour.setPace(1, 1);
    QSignalSpy finished(&tour, &Tour::finished);
    // A dialog that a failed tour leaves open would hold the test.
    connect(&tour, &Tour::finished, qApp, &QApplication::closeAllWindows);
    tour.start();
    if (finished.wait())
        *success = finished.first().first().toBool();
    return printed;
}

void TourTest::walksThroughDialogsAndPictures()
{
    QDialog dialog;
    bool returned = false;
    Step open{QStringLiteral("open"),
              [&] {
                  dialog.exec();
                  returned = true;
                  return QString();
              },
              [&] { return dialog.isVisible() ? QString() : QStringLiteral("hidden"); },
              QStringLiteral("dialog"), [&] { return dialog.frameGeometry(); }};
    Step close{QStringLiteral("close"),
               [&] {
                   dialog.reject();
                   return QString();
               },
               [&] { return returned ? QString() : QStringLiteral("still in the dialog"); },
               QString(),
               {}};
    bool success = false;
    QCOMPARE(walk({open, close}, &success), QStringLiteral("1/2 open: ok\n2/2 close: ok\n"));
    QVERIFY(success);
    QVERIFY(!QImage(m_folder.filePath(QStringLiteral("01-dialog.png"))).isNull());
}

void TourTest::endsAtFirstFailure_data()
{
    QTest::addColumn<QString>("obstacle");
    QTest::addColumn<QString>("missing");
    QTest::addColumn<QString>("printed");
    QTest::newRow("cannot act") << QStringLiteral("no button") << QString()
                                << QStringLiteral("1/2 bad: FAILED: no button\n");
    QTest::newRow("not confirmed") << QString() << QStringLiteral("no reply")
                                   << QStringLiteral("1/2 bad: FAILED: after 0.03 s no reply\n");
}

void TourTest::endsAtFirstFailure()
{
    QFETCH(const QString, obstacle);
    QFETCH(const QString, missing);
    QFETCH(const QString, printed);
    bool reached = false;
    Step bad{QStringLiteral("bad"), [&] { return obstacle; }, [&] { return missing; }, QString(), {}, 30};
    Step next{QStringLiteral("next"),
              [&] {
                  reached = true;
                  return QString();
              },
              {},
              QString(),
              {}};
    bool success = true;
    QCOMPARE(walk({bad, next}, &success), printed);
    QVERIFY(!success);
    QVERIFY(!reached);
}

void TourTest::handsRefuseWhatNobodyCouldClick()
{
    QWidget window;
    QVBoxLayout layout(&window);
    QPushButton button;
    layout.addWidget(&button);
    QSignalSpy clicked(&button, &QPushButton::clicked);
    QVERIFY(!hands::click(nullptr).isEmpty());
    QVERIFY(!hands::click(&button).isEmpty()); // not shown yet
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    button.setEnabled(false);
    QVERIFY(!hands::click(&button).isEmpty());
    button.setEnabled(true);
    {
        QWidget cover(&window);
        cover.setGeometry(window.rect());
        cover.show();
        QVERIFY(!hands::click(&button).isEmpty());
    }
    {
        QDialog dialog;
        dialog.setModal(true);
        dialog.show();
        QVERIFY(QTest::qWaitForWindowExposed(&dialog));
        QVERIFY(!hands::click(&button).isEmpty());
    }
    QCOMPARE(clicked.count(), 0);
    QCOMPARE(hands::click(&button), QString());
    QCOMPARE(clicked.count(), 1);
}

void TourTest::handsWorkWidgets()
{
    QWidget window;
    QVBoxLayout layout(&window);
    QLineEdit line(QStringLiteral("before"));
    QSpinBox spin;
    spin.setRange(-100, 20000);
    spin.setSuffix(QStringLiteral(" Hz"));
    QCheckBox box(QStringLiteral("Enable"));
    QComboBox combo;
    combo.addItems({QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")});
    for (QWidget *widget : {static_cast<QWidget *>(&line), static_cast<QWidget *>(&spin),
                            static_cast<QWidget *>(&box), static_cast<QWidget *>(&combo)})
        layout.addWidget(widget);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QSignalSpy edited(&line, &QLineEdit::editingFinished);
    QCOMPARE(hands::enter(&line, QStringLiteral("Stage_1")), QString());
    QCOMPARE(line.text(), QStringLiteral("Stage_1"));
    QCOMPARE(edited.count(), 1);
    QCOMPARE(hands::enter(&spin, QStringLiteral("-12")), QString());
    QCOMPARE(spin.value(), -12);
    QSignalSpy clicked(&box, &QCheckBox::clicked);
    QCOMPARE(hands::check(&box, true), QString());
    QCOMPARE(hands::check(&box, true), QString());
    QCOMPARE(clicked.count(), 1);
    QCOMPARE(hands::choose(&combo, 2), QString());
    QCOMPARE(combo.currentIndex(), 2);
    QVERIFY(!hands::choose(&combo, 3).isEmpty());
}

void TourTest::handsChooseFile()
{
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    const QString path = m_folder.filePath(QStringLiteral("chosen.xml"));
    QFileDialog dialog(nullptr, QString(), m_folder.path());
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    QSignalSpy chosen(&dialog, &QFileDialog::fileSelected);
    dialog.open();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    QCOMPARE(fileDialog(), &dialog);
    const auto missing = untilChosen(path);
    QTRY_COMPARE(missing(), QString());
    QCOMPARE(chosen.value(0), QVariantList{path});
    QVERIFY(!chooseFile(path).isEmpty());
}

void TourTest::changesEveryValue()
{
    const QByteArray before = R"({"a":[{"gain":-100,"mute":true},{"gain":0,"mute":false}],)"
                              R"("ip_mode":"static","name":"KBX"})";
    const QByteArray after = R"({"a":[{"gain":-99,"mute":false},{"gain":-1,"mute":true}],)"
                             R"("ip_mode":"dhcp","name":"KBX"})";
    const QJsonValue changed = otherValue(QJsonDocument::fromJson(before).object());
    QCOMPARE(QJsonDocument(changed.toObject()).toJson(QJsonDocument::Compact), after);
}

void TourTest::readsOptions_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<int>("simulate");
    QTest::addColumn<QString>("complaint");
    QTest::newRow("none") << QString() << 0 << QString();
    QTest::newRow("devices") << QStringLiteral("--simulate 3") << 3 << QString();
    QTest::newRow("too many") << QStringLiteral("--simulate 201") << 201 << QStringLiteral("--simulate");
    QTest::newRow("no number") << QStringLiteral("--simulate many") << 0 << QStringLiteral("many");
    QTest::newRow("unknown option") << QStringLiteral("--emulate 3") << 0 << QStringLiteral("emulate");
    QTest::newRow("stray word") << QStringLiteral("simulate") << 0 << QStringLiteral("simulate");
}

void TourTest::readsOptions()
{
    QFETCH(const QString, line);
    QFETCH(const int, simulate);
    QFETCH(const QString, complaint);
    const QStringList words = line.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    const ParsedOptions parsed = parseOptions(QStringList{QStringLiteral("plexo-devhost")} + words);
    QCOMPARE(parsed.options.simulate, simulate);
    QCOMPARE(parsed.error.isEmpty(), complaint.isEmpty());
    QVERIFY2(parsed.error.contains(complaint), qPrintable(parsed.error));
}

void TourTest::saysWhySimulationEnded()
{
    for (const char *program : {"/no/such/simulator", "/bin/false"}) {
        SimulatedDevices devices(QString::fromLatin1(program));
        QSignalSpy failed(&devices, &SimulatedDevices::failed);
        devices.start(1, QStringLiteral("lo"));
        QTRY_COMPARE(failed.count(), 1);
        QVERIFY(failed.first().at(1).toString().contains(QStringLiteral("KBX-0001")));
    }
}

void TourTest::advisesOnPort()
{
    QVERIFY(uploadPortAdvice(69, true, QString()).isEmpty());
    QVERIFY(uploadPortAdvice(69, true, QStringLiteral("denied"))
                .contains(QStringLiteral("sudo sysctl -w net.ipv4.ip_unprivileged_port_start=69")));
    const QString taken = uploadPortAdvice(69, false, QStringLiteral("bound"));
    QVERIFY(taken.contains(QStringLiteral("bound")) && taken.contains(QStringLiteral("ss -lunp")));
}

QTEST_MAIN(TourTest)
#include "tst_tour.moc"
