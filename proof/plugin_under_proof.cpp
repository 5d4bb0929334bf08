#include "proof/plugin_under_proof.h"

#include "host/plexo_plugin_factory.h"

#include <QApplication>
#include <QPluginLoader>

#include <cstdio>
#include <utility>

namespace proof {

namespace {

QStringList &warnings()
{
    static QStringList kept;
    return kept;
}

/// What the systems and libraries say that these programs run on.
bool isOfTheSystem(const QString &text)
{
    return text.contains(QLatin1String("XDG_RUNTIME_DIR"))
        || text.startsWith(QLatin1String("This plugin does not support"));
}

void keepWarnings(QtMsgType type, const QMessageLogContext &, const QString &text)
{
    if (type == QtDebugMsg || type == QtInfoMsg || isOfTheSystem(text))
        return;
    std::fprintf(stderr, "%s\n", qPrintable(text));
    warnings().append(QStringLiteral("a warning: ") + text);
}

} // namespace

PlexoPluginFactory *loadPlugin()
{
    qInstallMessageHandler(keepWarnings);
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    static QPluginLoader loader(QStringLiteral(PLUGIN_FILE));
    auto *factory = qobject_cast<PlexoPluginFactory *>(loader.instance());
    if (!factory)
        qFatal("%s", qPrintable(loader.errorString()));
    return factory;
}

QStringList takeWarnings()
{
    return std::exchange(warnings(), {});
}

} // namespace proof
