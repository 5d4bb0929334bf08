#include "devhost/host.h"
#include "devhost/host_window.h"
#include "devhost/look.h"
#include "devhost/network_choice.h"
#include "devhost/options.h"
#include "devhost/upload_port.h"

#include <QApplication>
#include <QTextStream>

namespace {

int complain(const QString &sentence)
{
    QTextStream(stderr) << "plexo-devhost: " << sentence << Qt::endl;
    return 2;
}

} // namespace

int main(int argc, char *argv[])
{
    QApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QApplication application(argc, argv);
    const devhost::ParsedOptions parsed = devhost::parseOptions(application.arguments());
    if (!parsed.help.isEmpty()) {
        QTextStream(stdout) << parsed.help;
        return 0;
    }
    if (!parsed.error.isEmpty())
        return complain(parsed.error + QStringLiteral(" Try --help."));
    const devhost::InterfaceChoice choice
        = devhost::chooseInterface(parsed.options.interface, parsed.options.simulate > 0);
    if (!choice.error.isEmpty())
        return complain(choice.error);

    devhost::wearDarkLook();
    QWidget styleSource;
    styleSource.setStyleSheet(application.styleSheet());
    devhost::Host host;
    host.sessions()->setStyleSource(&styleSource);
    devhost::HostWindow window(&host, parsed.options.snapshotFolder);
    host.start(parsed.options, choice.interface);
    window.setNotice(devhost::uploadPortProblem());
    window.show();
    return application.exec();
}
