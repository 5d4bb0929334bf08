#include "devhost/window_memory.h"
#include "devhost/window_menu.h"

#include <QDataStream>
#include <QFile>
#include <QGuiApplication>
#include <QHeaderView>
#include <QLineEdit>
#include <QScreen>
#include <QStandardItemModel>
#include <QTabWidget>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>
#include <QVBoxLayout>

using namespace devhost;

namespace {

/// A window with a part of each kind that is remembered.
struct Arrangement
{
    QWidget window;
    QTableView table;
    QLineEdit filter;
    QStandardItemModel model{1, 3};

    Arrangement()
    {
        window.setObjectName(QStringLiteral("window"));
        window.setWindowTitle(QStringLiteral("w"));
        table.setObjectName(QStringLiteral("table"));
        filter.setObjectName(QStringLiteral("filter"));
        table.setModel(&model);
        auto *column = new QVBoxLayout(&window);
        for (QWidget *part : {static_cast<QWidget *>(&table), static_cast<QWidget *>(&filter)}) {
            column->addWidget(part);
            markRemembered(part);
        }
    }
    ~Arrangement()
    {
        table.setParent(nullptr);
        filter.setParent(nullptr);
    }
};

struct Editor : QWidget
{
    QTabWidget pages{this};

    explicit Editor(const QString &title)
    {
        pages.setObjectName(QStringLiteral("pages"));
        pages.addTab(new QWidget, QString());
        pages.addTab(new QWidget, QString());
        setWindowTitle(title);
        show();
    }
};

/// A settings file that remembers the window there.
QByteArray geometryAt(const QRect &place)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setVersion(QDataStream::Qt_4_0);
    // As QWidget::saveGeometry() documents: number, version, frame and inner place, screen, states, its
    // width.
    stream << quint32(0x1D9D0CB) << quint16(3) << quint16(0) << place << place << qint32(1) << quint8(0)
           << quint8(0) << qint32(1920) << place;
    QByteArray text;
    for (const char byte : bytes)
        text += "\\x" + QByteArray::number(quint8(byte), 16);
    return "[General]\nwindow=@ByteArray(" + text + ")\n";
}

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

class WindowMemoryTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void bringsBackWhatTheUserSet();
    void startsWithWhateverIsInTheFile_data();
    void startsWithWhateverIsInTheFile();
    void placesWindowsBesideEachOther();

private:
    void write(const QByteArray &content);

    QScopedPointer<QTemporaryDir> m_folder;
    QString m_file;
};

void WindowMemoryTest::init()
{
    m_folder.reset(new QTemporaryDir);
    m_file = m_folder->filePath(QStringLiteral("host.ini"));
}

void WindowMemoryTest::write(const QByteArray &content)
{
    QFile file(m_file);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(content);
}

void WindowMemoryTest::bringsBackWhatTheUserSet()
{
    const QString name = QStringLiteral("a/b [c]=%d");
    const QString folders[] = {QStringLiteral("folder"), QStringLiteral("gone")};
    {
        WindowMemory memory(m_file);
        Arrangement made;
        made.window.setGeometry(60, 70, 333, 222);
        made.table.setColumnWidth(1, 77);
        made.table.setColumnHidden(2, true);
        made.filter.setText(QStringLiteral("usb -status"));
        memory.keep(&made.window);
        memory.keep(QStringLiteral("open"), QStringList{name, QStringLiteral("x")});
        memory.keepFolderOf(folders[0], m_folder->filePath(QStringLiteral("a.xml")));
        memory.keepFolderOf(folders[1], m_folder->filePath(QStringLiteral("gone/a.xml")));
        memory.followWindows(nullptr);
        Editor editor(name);
        editor.resize(234, 123);
        editor.pages.setCurrentIndex(1);
        editor.hide();
    }
    WindowMemory memory(m_file);
    QCOMPARE(memory.problem(), QString());
    Arrangement found;
    memory.restore(&found.window);
    QCOMPARE(found.window.size(), QSize(333, 222));
    QCOMPARE(found.table.columnWidth(1), 77);
    QVERIFY(found.table.isColumnHidden(2) && !found.table.isColumnHidden(0));
    QCOMPARE(found.filter.text(), QStringLiteral("usb -status"));
    QCOMPARE(memory.texts(QStringLiteral("open")), (QStringList{name, QStringLiteral("x")}));
    QCOMPARE(memory.folder(folders[0]), m_folder->path());
    QVERIFY(QFileInfo(memory.folder(folders[1])).isDir());
    memory.followWindows(nullptr);
    Editor editor(name);
    QCOMPARE(editor.size(), QSize(234, 123));
    memory.restorePages(&editor);
    QCOMPARE(editor.pages.currentIndex(), 1);
}

void WindowMemoryTest::startsWithWhateverIsInTheFile_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<bool>("damaged");
    QTest::newRow("no settings") << QByteArray("\x7f"
                                               "ELF\n]]][[[\n\xff=\n[x")
                                 << true;
    QTest::newRow("far too long") << QByteArray(2 * 1024 * 1024, 'x') << true;
    QTest::newRow("values of other kinds")
        << QByteArray("[General]\nwindow=@ByteArray(\\x1\\xd9\\xd0\\xcb junk)\n"
                      "[parts]\ntable=-5, 999999999, x\nfilter=@Invalid()\n")
        << false;
    QTest::newRow("other columns") << QByteArray("[parts]\ntable=1, 2, 3, 4, 5, 6, 7, 8, 9\n") << false;
    QTest::newRow("a screen that is gone") << geometryAt(QRect(90000, -90000, 400, 300)) << false;
}

void WindowMemoryTest::startsWithWhateverIsInTheFile()
{
    QFETCH(const QByteArray, content);
    QFETCH(const bool, damaged);
    write(content);
    WindowMemory memory(m_file);
    QCOMPARE(memory.problem().contains(QStringLiteral("host.ini.damaged")), damaged);
    QCOMPARE(contentOf(m_file + QStringLiteral(".damaged")), damaged ? content : QByteArray());
    Arrangement shown;
    memory.restore(&shown.window);
    shown.window.show();
    const QRect screen = QGuiApplication::primaryScreen()->virtualGeometry();
    QVERIFY(screen.intersects(shown.window.frameGeometry()));
    QVERIFY(shown.table.columnWidth(0) > 0 && shown.table.columnWidth(1) <= 2000);
    // And works from then on.
    memory.keep(QStringLiteral("key"), QStringLiteral("value"));
    QCOMPARE(WindowMemory(m_file).text(QStringLiteral("key")), QStringLiteral("value"));
}

void WindowMemoryTest::placesWindowsBesideEachOther()
{
    const QRect area(10, 20, 100, 50);
    const QSize size(40, 20);
    const QList<QRect> places = tiled({size, size, size, size, size, QSize(500, 500)}, area);
    QCOMPARE(places.mid(0, 4),
             (QList<QRect>{{10, 20, 40, 20}, {50, 20, 40, 20}, {10, 40, 40, 20}, {50, 40, 40, 20}}));
    QCOMPARE(places.at(4).size(), size);
    QVERIFY(places.at(4).topLeft() != places.at(0).topLeft() && area.contains(places.at(4).topLeft()));
    QCOMPARE(places.at(5).size(), QSize(500, 500));
}

QTEST_MAIN(WindowMemoryTest)
#include "tst_window_memory.moc"
