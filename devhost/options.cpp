#include "devhost/options.h"

#include "devhost/simulated_devices.h"

#include <QCommandLineParser>

namespace devhost {

namespace {

void describe(QCommandLineParser *parser)
{
    parser->setApplicationDescription(
        QStringLiteral("Finds audio devices on the network, loads their plugins and shows their editors."));
    parser->addHelpOption();
    parser->addVersionOption();
    parser->addOptions({
        {QStringLiteral("plugin"),
         QStringLiteral("Load the plugin FILE; may be given several times. Default: tarnkbx_plugin beside "
                        "the program."),
         QStringLiteral("FILE")},
        {QStringLiteral("interface"),
         QStringLiteral("Network interface to work on. Default: loopback with --simulate, else the first one "
                        "that can multicast."),
         QStringLiteral("NAME")},
        {QStringLiteral("simulate"), QStringLiteral("Start N simulated devices, which end with the program."),
         QStringLiteral("N"), QStringLiteral("0")},
        {QStringLiteral("snapshot-dir"), QStringLiteral("Folder in which snapshot files are kept."),
         QStringLiteral("DIR")},
        {QStringLiteral("record"),
         QStringLiteral("Record the session from its start into FILE, which must not be there yet. "
                        "kbx-simulator --replay FILE answers as its devices did."),
         QStringLiteral("FILE")},
        {QStringLiteral("style"), QStringLiteral("Look dark or light this time."), QStringLiteral("NAME")},
        {QStringLiteral("tour"),
         QStringLiteral("Open the first simulated device, use every page of its editor, write pictures and "
                        "the messages into DIR, and end."),
         QStringLiteral("DIR")},
        {QStringLiteral("tour-changes-real-device"),
         QStringLiteral("Let the tour work on the first device found, simulated or not. It OVERWRITES the "
                        "device's addresses, presets and voice cues.")},
    });
}

/// A tour changes what a device holds, presets and addresses included.
QString checkTour(const Options &options)
{
    if (options.tourFolder.isEmpty() || options.simulate > 0 || options.tourRealDevice)
        return QString();
    return QStringLiteral(
        "--tour overwrites the settings of a device: give it a simulated one with --simulate 1, "
        "or permit a real one with --tour-changes-real-device.");
}

QString checkStyle(const QString &style)
{
    if (style.isEmpty() || style == QLatin1String("dark") || style == QLatin1String("light"))
        return QString();
    return QStringLiteral("--style is dark or light, not \"%1\".").arg(style);
}

QString readCount(const QString &text, int *count)
{
    bool valid = false;
    *count = text.toInt(&valid);
    if (valid && *count >= 0 && *count <= SimulatedDevices::Most)
        return QString();
    return QStringLiteral("--simulate takes a whole number from 0 to %1, not \"%2\".")
        .arg(SimulatedDevices::Most)
        .arg(text);
}

} // namespace

ParsedOptions parseOptions(const QStringList &arguments)
{
    QCommandLineParser parser;
    describe(&parser);
    ParsedOptions parsed;
    if (!parser.parse(arguments)) {
        parsed.error = parser.errorText();
        if (!parsed.error.endsWith(QLatin1Char('.')))
            parsed.error += QLatin1Char('.');
        return parsed;
    }
    if (parser.isSet(QStringLiteral("version"))) {
        parsed.help = QStringLiteral("plexo-devhost " KBX_VERSION "\n");
        return parsed;
    }
    if (parser.isSet(QStringLiteral("help"))) {
        parsed.help = parser.helpText();
        return parsed;
    }
    if (!parser.positionalArguments().isEmpty()) {
        parsed.error = QStringLiteral("\"%1\" is no option.").arg(parser.positionalArguments().first());
        return parsed;
    }
    parsed.options.plugins = parser.values(QStringLiteral("plugin"));
    parsed.options.interface = parser.value(QStringLiteral("interface"));
    parsed.options.snapshotFolder = parser.value(QStringLiteral("snapshot-dir"));
    parsed.options.recordFile = parser.value(QStringLiteral("record"));
    parsed.options.tourFolder = parser.value(QStringLiteral("tour"));
    parsed.options.tourRealDevice = parser.isSet(QStringLiteral("tour-changes-real-device"));
    parsed.error = readCount(parser.value(QStringLiteral("simulate")), &parsed.options.simulate);
    parsed.options.style = parser.value(QStringLiteral("style"));
    if (parsed.error.isEmpty())
        parsed.error = checkStyle(parsed.options.style);
    if (parsed.error.isEmpty())
        parsed.error = checkTour(parsed.options);
    return parsed;
}

} // namespace devhost
