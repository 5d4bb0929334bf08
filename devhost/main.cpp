#include "devhost/console.h"
#include "devhost/host.h"
#include "devhost/host_window.h"
#include "devhost/look_menu.h"
#include "devhost/network_choice.h"
#include "devhost/options.h"
#include "devhost/tour/tour_run.h"
#include "devhost/window_memory.h"

#include <QApplication>
#include <QDir>
#include <QMessageBox>
#include <QTextStream>

namespace {

bool isPrintRead()
{
    static const bool read = devhost::joinConsole();
    return read;
}

/// Prints @p text, or shows it in a box where nobody would read it.
void tell(FILE *stream, const QString &text)
{
    if (isPrintRead()) {
        QTextStream(stream) << text << Qt::endl;
        return;
    }
    int count = 1;
    char name[] = "plexo-devhost";
    char *arguments[] = {name, nullptr};
    const QScopedPointer<QApplication> own(qApp ? nullptr : new QApplication(count, arguments));
    QMessageBox::information(nullptr, QString::fromLatin1(name), text);
}

int complain(const QString &sentence)
{
    tell(stderr, QStringLiteral("plexo-devhost: ") + sentence);
    return 2;
}

/// Before there is an application with windows: that would take options such as --plugin for its own, and
/// could not even print the help without a display.
devhost::ParsedOptions readArguments(int argc, char *argv[])
{
    const QCoreApplication arguments(argc, argv);
    return devhost::parseOptions(QCoreApplication::arguments());
}

/// The answer is empty, or a sentence on what failed.
QString makeFolder(const QString &folder)
{
    if (folder.isEmpty() || QDir().mkpath(folder))
        return QString();
    return QStringLiteral("The folder %1 cannot be made. Name another one with --snapshot-dir.").arg(folder);
}

/// The exit code: 0 when every step was confirmed.
int takeTour(devhost::Host *host, devhost::HostWindow *window, const devhost::Options &options)
{
    // The tour types into file dialogs and finds their parts by name.
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    isPrintRead(); // before its first line
    devhost::tour::TourRun run(host, window, options);
    QObject::connect(&run, &devhost::tour::TourRun::finished, qApp,
                     [](bool success) { QApplication::exit(success ? 0 : 1); });
    QObject::connect(window, &devhost::HostWindow::closed, qApp, [] { QApplication::exit(1); });
    const QString error = run.start();
    return error.isEmpty() ? QApplication::exec() : complain(error);
}

/// Where nothing is remembered, @p memory answers with what a first start has.
devhost::Look chosenLook(const devhost::WindowMemory &memory, const devhost::Options &options)
{
    devhost::Look look = devhost::rememberedLook(memory);
    if (!options.style.isEmpty())
        look.light = options.style == QLatin1String("light");
    return look;
}

/// The answer is empty, or a sentence on what failed.
QString startRecording(devhost::Host *host, const QString &file)
{
    return file.isEmpty() ? QString() : host->recorder()->start(file);
}

/// The exit code, once the user has closed the window.
int workUntilClosed(const devhost::HostWindow *window)
{
    QObject::connect(window, &devhost::HostWindow::closed, qApp, &QApplication::quit);
    return QApplication::exec();
}

} // namespace

int main(int argc, char *argv[])
{
    const devhost::ParsedOptions parsed = readArguments(argc, argv);
    if (!parsed.help.isEmpty()) {
        tell(stdout, parsed.help.trimmed());
        return 0;
    }
    if (!parsed.error.isEmpty())
        return complain(parsed.error + QStringLiteral(" Try --help."));
    const QString problem = makeFolder(parsed.options.snapshotFolder);
    if (!problem.isEmpty())
        return complain(problem);

    QApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    int nameOnly = 1;
    QApplication application(nameOnly, argv);
    // Block editors are windows of their own and go a little later than the host's: Qt would wait for ever.
    QApplication::setQuitOnLastWindowClosed(false);
    const devhost::InterfaceChoice choice
        = devhost::chooseInterface(parsed.options.interface, parsed.options.simulate > 0);
    if (!choice.error.isEmpty())
        return complain(choice.error);

    // A tour looks and works alike wherever it is taken.
    const bool tour = !parsed.options.tourFolder.isEmpty();
    devhost::WindowMemory memory(tour ? QString() : devhost::WindowMemory::usersFile());
    devhost::wearLook(chosenLook(memory, parsed.options));
    QWidget styleSource;
    styleSource.setStyleSheet(application.styleSheet());
    devhost::Host host;
    host.sessions()->setStyleSource(&styleSource);
    const QString unrecorded = startRecording(&host, parsed.options.recordFile);
    if (!unrecorded.isEmpty())
        return complain(unrecorded);
    devhost::HostWindow window(&host, &memory, parsed.options.snapshotFolder);
    host.start(parsed.options, choice.interface);
    window.show();
    return tour ? takeTour(&host, &window, parsed.options) : workUntilClosed(&window);
}
