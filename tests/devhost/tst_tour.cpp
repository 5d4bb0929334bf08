#include "devhost/tour/hands.h"
#include "devhost/tour/tour.h"
#include "devhost/tour/tour_files.h"

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
    void endsAtFirstFailure_data();
    void endsAtFirstFailure();
    void removesItsOwnFilesOnly();
    void handsRefuseWhatNobodyCouldClick();
};

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
    QFETCH(QString, obstacle);
    QFETCH(QString, missing);
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
    QString shown;
    QTextStream out(&shown);
    const QTemporaryDir folder;
    Tour tour({bad, next}, folder.path(), &out);
    QSignalSpy finished(&tour, &Tour::finished);
    tour.start();
    QVERIFY(finished.wait());
    QCOMPARE(finished.first().first(), QVariant(false));
    QCOMPARE(shown, printed);
    QVERIFY(!reached);
}

void TourTest::removesItsOwnFilesOnly()
{
    const QTemporaryDir temporary;
    const QDir folder(temporary.path());
    for (const char *name : {"holiday.png", "01-mine.png", "02-tour.png", "snapshot.xml"}) {
        QFile file(folder.filePath(QLatin1String(name)));
        QVERIFY(file.open(QIODevice::WriteOnly));
    }
    noteFile(folder, QStringLiteral("02-tour.png"));
    noteFile(folder, QStringLiteral("../holiday.png"));
    removeEarlierFiles(folder);
    QCOMPARE(folder.entryList(QDir::Files),
             (QStringList{QStringLiteral("01-mine.png"), QStringLiteral("holiday.png"),
                          QStringLiteral("snapshot.xml")}));
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

QTEST_MAIN(TourTest)
#include "tst_tour.moc"
