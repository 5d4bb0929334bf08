#include "simulator/description.h"

#include "simulator/device_table.h"

#include <QRegularExpression>

namespace sim {

namespace {

QString span(int count)
{
    return count == 1 ? QStringLiteral("0") : QStringLiteral("0..%1").arg(count - 1);
}

/// "{4}" and "{..4}" as the indices that they stand for.
QString shownPath(const Row &row)
{
    QString path = QString::fromLatin1(row.path);
    static const QRegularExpression entries(QStringLiteral("\\{(?:\\.\\.)?([0-9]+)\\}"));
    for (auto match = entries.match(path); match.hasMatch(); match = entries.match(path))
        path.replace(match.capturedStart(), match.capturedLength(), span(match.capturedRef(1).toInt()));
    return path;
}

QString shownType(const ParameterTree &tree, const Row &row)
{
    static const QRegularExpression indices(QStringLiteral("\\{[^}]*\\}"));
    const QString element = QString::fromLatin1(row.path).replace(indices, QStringLiteral("0"));
    const QString taken = takenBy(*tree.describe(element));
    return row.type.kind == Kind::Number ? taken + QStringLiteral(", also as a decimal text") : taken;
}

/// What takes several lines stands below its table.
bool isLong(const Row &row)
{
    return qstrlen(row.factory) > 40;
}

/// What the device reports by itself has no value of the factory's.
QString shownFactory(const Row &row)
{
    const QString value = QString::fromLatin1(row.factory);
    if (!row.settable || value == QLatin1String(R"("")"))
        return {};
    return isLong(row) ? QStringLiteral("below") : value;
}

QString lineOf(const QStringList &cells)
{
    return QStringLiteral("| ") + cells.join(QStringLiteral(" | ")) + QStringLiteral(" |\n");
}

QString tableOf(const QString &root)
{
    const bool commands = root == QLatin1String("/control");
    const ParameterTree tree(treeOf(deviceTable()));
    QString text = commands
        ? QStringLiteral("| path | takes | what it does |\n|---|---|---|\n")
        : QStringLiteral("| path | set | value | factory | what it is |\n|---|---|---|---|---|\n");
    QString below;
    for (const Row &row : deviceTable()) {
        if (!QLatin1String(row.path).startsWith(root + QLatin1Char('/')))
            continue;
        const QString path = QLatin1Char('`') + shownPath(row) + QLatin1Char('`');
        const QString type = shownType(tree, row);
        const QString set = row.settable ? QStringLiteral("yes") : QStringLiteral("no");
        const QString about = QString::fromLatin1(row.about);
        text += lineOf(commands ? QStringList{path, type, about}
                                : QStringList{path, set, type, shownFactory(row), about});
        if (isLong(row))
            below += QStringLiteral("\n%1 at the factory:\n\n```json\n%2\n```\n")
                         .arg(path, QString::fromLatin1(row.factory));
    }
    return text + below;
}

} // namespace

QString deviceDescription()
{
    QString text;
    for (const char *root : {"/info", "/status", "/system", "/preset", "/control"})
        text += QStringLiteral("### %1\n\n%2\n").arg(QLatin1String(root), tableOf(QLatin1String(root)));
    return text.trimmed();
}

} // namespace sim
