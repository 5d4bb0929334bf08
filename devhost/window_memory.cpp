#include "devhost/window_memory.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDir>
#include <QEvent>
#include <QFileInfo>
#include <QHeaderView>
#include <QLineEdit>
#include <QSplitter>
#include <QStandardPaths>
#include <QTabWidget>
#include <QTableView>
#include <QUrl>
#include <QWindow>

namespace devhost {

namespace {

constexpr char RememberedProperty[] = "remembered";
constexpr qint64 LargestFile = 1024 * 1024; // far above what the host ever writes
constexpr int MostPlaces = 200; // of windows, each with the name of its device
constexpr int LongestFilter = 200;
const QLatin1String PlacesGroup("places");

QString setAside(const QString &file)
{
    const QString aside = file + QStringLiteral(".damaged");
    QFile::remove(aside);
    const QString shown = QDir::toNativeSeparators(file);
    if (!QFile::rename(file, aside))
        return WindowMemory::tr(
                   "The settings in %1 are damaged and cannot be set aside; nothing is remembered. "
                   "Remove that file.")
            .arg(shown);
    return WindowMemory::tr(
               "The settings in %1 were damaged. They were set aside as %2, and everything has its "
               "default again.")
        .arg(shown, QFileInfo(aside).fileName());
}

/// Any name, as one part of a key.
QString keyOf(const QString &name)
{
    return QString::fromLatin1(QUrl::toPercentEncoding(name.left(200)));
}

QString keyOf(const QWidget *window)
{
    const QWidget *owner = ownerOf(window);
    return owner ? keyOf(owner->windowTitle()) + QLatin1Char('/') + keyOf(window->windowTitle())
                 : keyOf(window->windowTitle());
}

QString pagesKeyOf(const QTabWidget &tabs)
{
    return PlacesGroup + QLatin1Char('/') + keyOf(tabs.window()) + QLatin1String("/pages of ")
        + keyOf(tabs.objectName());
}

QVariantList columnsOf(const QHeaderView &header)
{
    QVariantList columns; // the width, or 0 for one that is hidden
    for (int column = 0; column < header.count(); ++column)
        columns.append(header.sectionSize(column));
    return columns;
}

void setColumns(QHeaderView *header, const QVariantList &columns)
{
    if (columns.size() != header->count())
        return;
    for (int column = 0; column < columns.size(); ++column) {
        const int width = columns.at(column).toInt();
        header->setSectionHidden(column, width <= 0 && column > 0);
        if (width > 0)
            header->resizeSection(column, qMin(width, 2000));
    }
}

bool isPlaceable(const QWidget *window)
{
    const bool frame = window->windowType() == Qt::Window || window->windowType() == Qt::Dialog;
    return window->isWindow() && frame && !window->isModal() && !window->windowTitle().isEmpty();
}

} // namespace

void markRemembered(QWidget *part)
{
    part->setProperty(RememberedProperty, true);
}

QWidget *ownerOf(const QWidget *window)
{
    if (window->parentWidget())
        return window->parentWidget()->window();
    const QWindow *handle = window->windowHandle();
    const QWindow *owner = handle ? handle->transientParent() : nullptr;
    for (QWidget *candidate : QApplication::topLevelWidgets()) {
        if (owner && candidate->windowHandle() == owner)
            return candidate;
    }
    return nullptr;
}

WindowMemory::WindowMemory(const QString &file, QObject *parent)
    : QObject(parent)
{
    if (file.isEmpty())
        return;
    const bool tooLarge = QFileInfo(file).size() > LargestFile;
    if (!tooLarge)
        m_settings.reset(new QSettings(file, QSettings::IniFormat));
    if (tooLarge || m_settings->status() == QSettings::FormatError) {
        m_settings.reset();
        m_problem = setAside(file);
        if (!QFileInfo::exists(file))
            m_settings.reset(new QSettings(file, QSettings::IniFormat));
    }
    if (m_settings && !m_settings->isWritable())
        m_problem = tr("The settings cannot be written to %1: nothing will be remembered. Check who may "
                       "write there.")
                        .arg(QDir::toNativeSeparators(file));
}

QString WindowMemory::usersFile()
{
    const QDir folder(QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation));
    return folder.filePath(QStringLiteral("plexo-devhost.ini"));
}

QString WindowMemory::text(const QString &key, const QString &otherwise) const
{
    return m_settings ? m_settings->value(key, otherwise).toString() : otherwise;
}

QStringList WindowMemory::texts(const QString &key) const
{
    return m_settings ? m_settings->value(key).toStringList() : QStringList();
}

void WindowMemory::keep(const QString &key, const QVariant &value)
{
    if (m_settings)
        m_settings->setValue(key, value);
}

QString WindowMemory::folder(const QString &key) const
{
    const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    for (const QString &folder : {text(key), documents}) {
        if (!folder.isEmpty() && QFileInfo(folder).isDir())
            return folder;
    }
    return QDir::homePath();
}

void WindowMemory::keepFolderOf(const QString &key, const QString &file)
{
    keep(key, QFileInfo(file).absolutePath());
}

void WindowMemory::restore(QWidget *window)
{
    if (!m_settings)
        return;
    window->restoreGeometry(m_settings->value(window->objectName()).toByteArray());
    for (QWidget *part : window->findChildren<QWidget *>()) {
        if (part->property(RememberedProperty).toBool())
            restorePart(part);
    }
}

void WindowMemory::keep(const QWidget *window)
{
    if (!m_settings)
        return;
    keep(window->objectName(), window->saveGeometry());
    for (const QWidget *part : window->findChildren<QWidget *>()) {
        if (part->property(RememberedProperty).toBool())
            keepPart(part);
    }
}

void WindowMemory::restorePart(QWidget *part)
{
    const QVariant value = m_settings->value(QStringLiteral("parts/") + part->objectName());
    if (!value.isValid())
        return;
    if (auto *splitter = qobject_cast<QSplitter *>(part)) {
        QList<int> sizes;
        for (const QVariant &size : value.toList())
            sizes.append(size.toInt());
        if (sizes.size() == splitter->count())
            splitter->setSizes(sizes);
    } else if (auto *table = qobject_cast<QTableView *>(part)) {
        setColumns(table->horizontalHeader(), value.toList());
    } else if (auto *edit = qobject_cast<QLineEdit *>(part)) {
        edit->setText(value.toString().left(LongestFilter));
    } else if (auto *button = qobject_cast<QAbstractButton *>(part)) {
        button->setChecked(value.toBool());
    }
}

void WindowMemory::keepPart(const QWidget *part)
{
    QVariant value;
    if (const auto *splitter = qobject_cast<const QSplitter *>(part)) {
        QVariantList sizes;
        for (int size : splitter->sizes())
            sizes.append(size);
        value = sizes;
    } else if (const auto *table = qobject_cast<const QTableView *>(part)) {
        value = columnsOf(*table->horizontalHeader());
    } else if (const auto *edit = qobject_cast<const QLineEdit *>(part)) {
        value = edit->text();
    } else if (const auto *button = qobject_cast<const QAbstractButton *>(part)) {
        value = button->isChecked();
    }
    keep(QStringLiteral("parts/") + part->objectName(), value);
}

void WindowMemory::followWindows(const QWidget *except)
{
    m_except = except;
    if (m_settings)
        qApp->installEventFilter(this);
}

bool WindowMemory::eventFilter(QObject *watched, QEvent *event)
{
    const bool shown = event->type() == QEvent::Show;
    const bool hidden = event->type() == QEvent::Hide;
    // Qt tells of a show before the window is on screen, so that it does not jump.
    auto *window = (shown || hidden) && !event->spontaneous() ? qobject_cast<QWidget *>(watched) : nullptr;
    if (window && window != m_except && isPlaceable(window)) {
        const QString key = PlacesGroup + QLatin1Char('/') + keyOf(window);
        if (shown)
            window->restoreGeometry(m_settings->value(key).toByteArray());
        else
            keep(key, window->saveGeometry());
        if (hidden) {
            keepPages(window);
            forgetOldPlaces();
        }
    }
    return false;
}

void WindowMemory::keepPages(const QWidget *window)
{
    for (const QTabWidget *tabs : window->findChildren<QTabWidget *>())
        keep(pagesKeyOf(*tabs), tabs->currentIndex());
}

void WindowMemory::restorePages(QWidget *window)
{
    for (QTabWidget *tabs : window->findChildren<QTabWidget *>())
        tabs->setCurrentIndex(text(pagesKeyOf(*tabs), QStringLiteral("-1")).toInt());
}

void WindowMemory::forgetOldPlaces()
{
    m_settings->beginGroup(PlacesGroup);
    if (m_settings->allKeys().size() > MostPlaces)
        m_settings->remove(QString());
    m_settings->endGroup();
}

} // namespace devhost
