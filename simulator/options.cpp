#include "simulator/options.h"

#include "simulator/description.h"
#include "simulator/ipv4_text.h"
#include "simulator/orders.h"

#include <QCommandLineParser>

namespace sim {

namespace {

constexpr int LongestName = 64; // hosts do not show a longer one

/// Reads the values of the options one after the other and keeps the first error.
class ValueReader
{
public:
    ValueReader(const QCommandLineParser &parser, QString *error)
        : m_parser(parser)
        , m_error(error)
    {
    }

    QString text(const char *option) const { return m_parser.value(QLatin1String(option)); }

    QJsonValue checked(const char *option, const Node &node)
    {
        bool numeric = false;
        const double number = text(option).toDouble(&numeric);
        const bool worded = node.kind == Kind::Word || node.kind == Kind::Text;
        const Outcome outcome = check(node, {}, {}, numeric && !worded ? QJsonValue(number) : text(option));
        if (!outcome.accepted())
            fail(option, takenBy(node));
        return outcome.value;
    }

    uint whole(const char *option, uint most)
    {
        bool valid = false;
        const uint value = text(option).toUInt(&valid);
        if (valid && value <= most)
            return value;
        fail(option, QStringLiteral("a whole number from 0 to %1").arg(most));
        return 0;
    }

    void fail(const char *option, const QString &expected)
    {
        if (m_error->isEmpty())
            *m_error = QStringLiteral("--%1 takes %2, not \"%3\".")
                           .arg(QLatin1String(option), expected, text(option));
    }

private:
    const QCommandLineParser &m_parser;
    QString *m_error;
};

struct OptionText
{
    const char *name;
    const char *valueName;
    const char *standard;
    const char *description;
};

constexpr OptionText OptionTexts[] = {
    {"name", "NAME", "KBX-0001", "Device name; the serial number follows from it."},
    {"address", "ADDRESS", "127.0.0.1",
     "IPv4 address of the device, one of this machine's; the MAC address follows from name and address."},
    {"interface", "IF", "",
     "Network interface for announcements and levels; the loopback interface without it."},
    {"port", "PORT", "47800", "UDP port of the control service, 0 for any free one."},
    {"state", "FILE", "", "Keep settings, presets, pairings and recordings' lengths in FILE."},
    {"seed", "N", "1", "Seed of everything that looks like chance."},
    {"replay", "FILE", "", "Answer as the device in this recording did (--name: which one)."},
    {"keep-upload", "FILE", "", "Write each fetched voice cue to FILE as it came."},
    {"latency", "MS", "0", "Every reply is this late."},
    {"jitter", "MS", "0", "Up to this much is added to the latency."},
    {"drop", "P", "0", "Probability that a request or its reply is lost."},
    {"duplicate", "P", "0", "Probability that a reply is sent twice."},
    {"reorder", "P", "0", "Probability that a reply is overtaken by the next one."},
    {"garbage", "P", "0", "Probability that random bytes replace a reply."},
    {"refuse", "PATTERN", "",
     "Refuse requests for paths that fit PATTERN (* any characters, ? one); set:PATTERN only sets."},
    {"vanish-after", "N", "0", "Go silent after N requests; 0 never."},
    {"return-after", "MS", "0", "Come back that long after vanishing; 0 never."},
    {"tftp-fault", "KIND", "none",
     "File transfer fault: none, lost-ack, duplicate-ack, wrong-block, nack or silence."},
    {"tftp-drop", "P", "0", "Probability that a packet of a file transfer is lost."},
    {"tftp-duplicate", "P", "0", "Probability that a packet of a file transfer is doubled."},
};

void describe(QCommandLineParser *parser)
{
    parser->setApplicationDescription(QStringLiteral("A simulated TarnKBX on the network."));
    parser->addHelpOption();
    for (const OptionText &text : OptionTexts)
        parser->addOption({QString::fromLatin1(text.name), QString::fromLatin1(text.description),
                           QString::fromLatin1(text.valueName), QString::fromLatin1(text.standard)});
    parser->addOption(
        {QStringLiteral("describe"), QStringLiteral("Print the tables of the device guide and end.")});
    parser->addOption({QStringLiteral("orders"), QStringLiteral("Take orders from the standard input.")});
    parser->addOption(
        {QStringLiteral("exit-with-parent"), QStringLiteral("End when the parent process ends.")});
    parser->addOption(
        {QStringLiteral("parent"),
         QStringLiteral("Process id of the parent, which may have ended before this program could look."),
         QStringLiteral("PID"), QStringLiteral("0")});
}

QJsonObject readFaults(ValueReader *reader)
{
    const ParameterTree orders(treeOf(presenceOrders()));
    const Node &node = *orders.describe(QStringLiteral("/faults"));
    QJsonObject faults;
    for (int i = 0; i < node.names.size(); ++i)
        faults.insert(node.names.at(i),
                      reader->checked(qPrintable(node.names.at(i)), node.children[size_t(i)]));
    return faults;
}

Options readOptions(const QCommandLineParser &parser, ValueReader *reader)
{
    Options options;
    options.name = reader->text("name");
    if (options.name.isEmpty() || options.name.size() > LongestName)
        reader->fail("name", QStringLiteral("a text of up to %1 characters").arg(LongestName));
    if (!ipv4FromText(reader->text("address")))
        reader->fail("address", QStringLiteral("a dotted IPv4 address"));
    options.address = QHostAddress(reader->text("address"));
    options.interface = reader->text("interface");
    options.port = quint16(reader->whole("port", 65535));
    options.stateFile = reader->text("state");
    options.replay = reader->text("replay");
    if (parser.isSet(QStringLiteral("name")))
        options.replayed = options.name;
    options.keepUpload = reader->text("keep-upload");
    options.seed = reader->whole("seed", 0xffffffffU);
    options.exitWithParent = parser.isSet(QStringLiteral("exit-with-parent"));
    options.parent = reader->whole("parent", 0x7fffffff);
    options.orders = parser.isSet(QStringLiteral("orders"));
    options.faults = readFaults(reader);
    return options;
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
    if (parser.isSet(QStringLiteral("help"))) {
        parsed.help = parser.helpText();
        return parsed;
    }
    if (parser.isSet(QStringLiteral("describe"))) {
        parsed.help = deviceDescription();
        return parsed;
    }
    if (!parser.positionalArguments().isEmpty()) {
        parsed.error = QStringLiteral("\"%1\" is no option.").arg(parser.positionalArguments().first());
        return parsed;
    }
    ValueReader reader(parser, &parsed.error);
    parsed.options = readOptions(parser, &reader);
    if (!parsed.options.replay.isEmpty()
        && (parser.isSet(QStringLiteral("state")) || parser.isSet(QStringLiteral("keep-upload"))))
        parsed.error
            = QStringLiteral("--replay goes without --state and --keep-upload: a recording has neither.");
    return parsed;
}

} // namespace sim
