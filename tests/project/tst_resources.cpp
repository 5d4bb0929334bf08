#include <QDir>
#include <QFile>
#include <QImageReader>
#include <QRegularExpression>
#include <QtEndian>
#include <QtTest>

namespace {

QByteArray contentsOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QString inResources(const QString &name)
{
    return QStringLiteral(KBX_RESOURCES_DIR "/") + name;
}

} // namespace

/// What the forms, the style sheet and the code name is in the library without anybody asking for it.
class TestResources : public QObject
{
    Q_OBJECT

private slots:
    void namedFilesExist_data();
    void namedFilesExist();
    void picturesDecode_data();
    void picturesDecode();
    void diagramIsTrueColourWithAlpha();
    void factoryIconIsLeftOut();
};

void TestResources::namedFilesExist_data()
{
    QTest::addColumn<QString>("source");
    QTest::addColumn<bool>("namesPictures");
    const QStringList forms = QDir(inResources(QStringLiteral("forms"))).entryList({QStringLiteral("*.ui")});
    QVERIFY(forms.contains(QStringLiteral("main_window.ui")));
    for (const QString &form : forms)
        QTest::newRow(qPrintable(form))
            << QStringLiteral("forms/") + form << (form == QLatin1String("main_window.ui"));
    QTest::newRow("style sheet") << QStringLiteral("style/plexo-dark.qss") << true;
}

void TestResources::namedFilesExist()
{
    QFETCH(QString, source);
    QFETCH(bool, namesPictures);
    const QString text = QString::fromUtf8(contentsOf(inResources(source)));
    QVERIFY(!text.isEmpty());
    // in a form <normaloff>path</normaloff> and its like, in a style sheet url(path)
    static const QRegularExpression picture(
        QStringLiteral("url\\(([^)]*)\\)|<(?:normal|disabled|active|selected)(?:on|off)>([^<]*)<"));
    auto it = picture.globalMatch(text);
    QVERIFY(it.hasNext() || !namesPictures);
    while (it.hasNext()) {
        const QRegularExpressionMatch match = it.next();
        const QString path = match.captured(1) + match.captured(2);
        QVERIFY2(path.startsWith(QLatin1String(":/")), qPrintable(path + QStringLiteral(" is not built in")));
        QVERIFY2(QFile::exists(path), qPrintable(path + QStringLiteral(" is missing")));
    }
}

void TestResources::picturesDecode_data()
{
    QTest::addColumn<QByteArray>("format");
    QTest::addColumn<QSize>("size");
    const QSize icon(64, 64);
    QTest::newRow(":/images/KBX_Image.png") << QByteArray("png") << QSize(552, 255);
    QTest::newRow(":/images/checked_white.png") << QByteArray("png") << icon;
    QTest::newRow(":/images/locked.png") << QByteArray("png") << icon;
    QTest::newRow(":/images/images/delete.jpg") << QByteArray("jpeg") << icon;
    QTest::newRow(":/images/images/audio_play_white.png") << QByteArray("png") << icon;
    QTest::newRow(":/images/images/audio_pause_white.png") << QByteArray("png") << icon;
    QTest::newRow(":/images/images/audio_prev_track_white.png") << QByteArray("png") << icon;
    QTest::newRow(":/images/images/audio_next_track_white.png") << QByteArray("png") << icon;
    QTest::newRow(":/images/images/audio_vol_down_white.png") << QByteArray("png") << icon;
    QTest::newRow(":/images/images/audio_vol_up_white.png") << QByteArray("png") << icon;
}

void TestResources::picturesDecode()
{
    QFETCH(QByteArray, format);
    QFETCH(QSize, size);
    QImageReader reader(QString::fromLatin1(QTest::currentDataTag()));
    reader.setDecideFormatFromContent(true); // the name's ending does not count
    QCOMPARE(reader.format(), format);
    const QImage image = reader.read();
    QVERIFY2(!image.isNull(), qPrintable(reader.errorString()));
    QCOMPARE(image.size(), size);
}

void TestResources::diagramIsTrueColourWithAlpha()
{
    const QByteArray png
        = contentsOf(QStringLiteral(":/TarnKBX_QML/images/TarnKBX_DSP_Block_View_no_Meters.png"));
    QCOMPARE(png.left(4), QByteArray("\x89PNG"));
    QCOMPARE(png.mid(12, 4), QByteArray("IHDR"));
    QCOMPARE(qFromBigEndian<quint32>(png.constData() + 16), 764u);
    QCOMPARE(qFromBigEndian<quint32>(png.constData() + 20), 560u);
    QCOMPARE(png.mid(24, 2), QByteArray("\x08\x06")); // eight bits a channel, red green blue alpha
}

/// The factory names an icon that it does not bring, so that its pixmap is null.
void TestResources::factoryIconIsLeftOut()
{
    QVERIFY(!QFile::exists(QStringLiteral(":/images/Lumo4_img.png")));
}

QTEST_GUILESS_MAIN(TestResources)
#include "tst_resources.moc"
