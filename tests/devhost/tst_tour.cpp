#include "devhost/simulated_devices.h"
#include "devhost/tour/hands.h"
#include "devhost/tour/tour.h"
#include "devhost/upload_port.h"

#include <QDialog>
#include <QPushButton>
#include <QSignalSpy>
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
