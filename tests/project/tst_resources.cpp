#include <QFile>
#include <QImageReader>
#include <QRegularExpression>
#include <QtTest>

namespace {

QByteArray contentsOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

/// What the forms, the style sheet and the code name is in the library without anybody asking for it.
class TestResources : public QObject
{
    Q_OBJECT

private slots:
    void namedPicturesAreBuiltIn_data();
    void namedPicturesAreBuiltIn();
    void diagramIsWhole();
};

void TestResources::namedPicturesAreBuiltIn_data()
{
    QTest::addColumn<QString>("source");
    for (const char *source : {"forms/main_window.ui", "style/plexo.qss"})
        QTest::newRow(source) << QStringLiteral(KBX_RESOURCES_DIR "/") + QLatin1String(source);
}

void TestResources::namedPicturesAreBuiltIn()
{
    QFETCH(QString, source);
    const QString text = QString::fromUtf8(contentsOf(source));
    // in a form <normaloff>path</normaloff> and its like, in a style sheet url(path)
    static const QRegularExpression picture(
        QStringLiteral("url\\(([^)]*)\\)|<(?:normal|disabled|active|selected)(?:on|off)>([^<]*)<"));
    auto it = picture.globalMatch(text);
    QVERIFY(it.hasNext());
    while (it.hasNext()) {
        const QRegularExpressionMatch match = it.next();
        const QString path = match.captured(1) + match.captured(2);
        QVERIFY2(path.startsWith(QLatin1String(":/")), qPrintable(path + QStringLiteral(" is not built in")));
        QImageReader reader(path);
        reader.setDecideFormatFromContent(true); // the name's ending does not count
        QVERIFY2(reader.canRead(), qPrintable(path + QStringLiteral(" is missing or no picture")));
    }
}

void TestResources::diagramIsWhole()
{
    const QImage diagram(QStringLiteral(":/TarnKBX_QML/images/TarnKBX_DSP_Block_View_no_Meters.png"));
    QCOMPARE(diagram.size(), QSize(764, 560));
    QVERIFY(diagram.hasAlphaChannel());
}

QTEST_GUILESS_MAIN(TestResources)
#include "tst_resources.moc"
