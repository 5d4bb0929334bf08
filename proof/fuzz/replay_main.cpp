// Runs a fuzz target once over each file of the folders or files named: what was found stays mended.

#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QTextStream>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);

namespace {

bool run(const QString &name)
{
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly)) {
        QTextStream(stderr) << name << " cannot be read" << Qt::endl;
        return false;
    }
    const QByteArray bytes = file.readAll();
    QTextStream(stdout) << name << Qt::endl; // the last line is the one that crashed
    LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t *>(bytes.constData()), size_t(bytes.size()));
    return true;
}

} // namespace

int main(int argc, char *argv[])
{
    int done = 0;
    for (int i = 1; i < argc; ++i) {
        const QString argument = QFile::decodeName(argv[i]);
        QStringList files{argument};
        if (QFileInfo(argument).isDir()) {
            files.clear();
            QDirIterator all(argument, QDir::Files, QDirIterator::Subdirectories);
            while (all.hasNext())
                files.append(all.next());
        }
        for (const QString &file : files) {
            if (!run(file))
                return 1;
            ++done;
        }
    }
    return done > 0 ? 0 : 1;
}
