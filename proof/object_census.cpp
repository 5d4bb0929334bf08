#include "proof/object_census.h"

#include <QAbstractEventDispatcher>
#include <QDir>
#include <QFile>
#include <QObject>
#include <QRegularExpression>
#include <QSet>
#include <QThread>

#include <malloc.h>
#include <mutex>
#include <unistd.h>

// What Qt calls for each object made and destroyed (qhooks_p.h): version, size, Qt's version, then the two.
QT_BEGIN_NAMESPACE
extern Q_CORE_EXPORT quintptr qtHookData[];
QT_END_NAMESPACE

namespace proof {

namespace {

constexpr int AddHook = 3;
constexpr int RemoveHook = 4;

struct Registry
{
    std::mutex mutex;
    QSet<QObject *> objects;
};

/// Never destroyed: objects go until the very end of the program.
Registry &registry()
{
    static auto *all = new Registry;
    return *all;
}

void add(QObject *object)
{
    const std::lock_guard<std::mutex> lock(registry().mutex);
    registry().objects.insert(object);
}

void remove(QObject *object)
{
    const std::lock_guard<std::mutex> lock(registry().mutex);
    registry().objects.remove(object);
}

/// Types of the scene have a number of their own in each editor.
QString className(const QObject *object)
{
    static const QRegularExpression number(QStringLiteral("_QML(TYPE)?_\\d+$"));
    return QString::fromLatin1(object->metaObject()->className()).remove(number);
}

double residentMiB()
{
    QFile file(QStringLiteral("/proc/self/statm"));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    return file.readAll().split(' ').value(1).toDouble() * double(sysconf(_SC_PAGESIZE)) / (1024 * 1024);
}

} // namespace

void beginCensus()
{
    registry();
    qtHookData[AddHook] = reinterpret_cast<quintptr>(&add);
    qtHookData[RemoveHook] = reinterpret_cast<quintptr>(&remove);
}

Census takeCensus()
{
    Census census;
    malloc_trim(0);
    census.residentMiB = residentMiB();
    census.descriptors
        = int(QDir(QStringLiteral("/proc/self/fd")).entryList(QDir::Files | QDir::System).size());
    const std::lock_guard<std::mutex> lock(registry().mutex);
    census.objects = registry().objects.size();
    for (QObject *object : qAsConst(registry().objects)) {
        if (object->thread() != QThread::currentThread())
            continue;
        census.timers += QAbstractEventDispatcher::instance()->registeredTimers(object).size();
        ++census.classes[className(object)];
    }
    return census;
}

} // namespace proof
