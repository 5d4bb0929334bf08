#pragma once

#include <QObject>
#include <QScopedPointer>
#include <QSettings>
#include <QStringList>

namespace devhost {

/// Remembers from one start to the next how the user arranged the host: the places of windows, columns,
/// filters, folders, open editors. Where no settings file is given, or none can be used, everything has its
/// default.
class WindowMemory : public QObject
{
    Q_OBJECT

public:
    /// Remembers nothing when @p file is empty. A damaged file is set aside and told by problem().
    explicit WindowMemory(const QString &file, QObject *parent = nullptr);

    /// The file of the user who runs the program.
    static QString usersFile();

    /// A sentence for the user when the file was damaged or cannot be written; else empty.
    QString problem() const { return m_problem; }

    QString text(const QString &key, const QString &otherwise = QString()) const;
    QStringList texts(const QString &key) const;
    void keep(const QString &key, const QVariant &value);

    /// Where a file dialog begins: in the folder that was kept under @p key, else in the user's documents,
    /// else at home, whichever is there.
    QString folder(const QString &key) const;
    void keepFolderOf(const QString &key, const QString &file);

    /// Brings @p window back to its place, and those of its parts to theirs that markRemembered() named. A
    /// place on a screen that is gone becomes one on a screen that is there.
    void restore(QWidget *window);
    void keep(const QWidget *window);

    /// From now on remembers the place of every window that opens, editors and theirs, each by its titles,
    /// and the chosen pages of its tabs.
    void followWindows(const QWidget *except);
    /// Turns to the pages that were chosen when a window of the title of @p window was last closed.
    void restorePages(QWidget *window);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void keepPages(const QWidget *window);
    void forgetOldPlaces();
    void restorePart(QWidget *part);
    void keepPart(const QWidget *part);

    QScopedPointer<QSettings> m_settings;
    QString m_problem;
    const QWidget *m_except = nullptr;
};

/// Asks the host to remember what the user sets @p part to. It has an object name and is a splitter, a view
/// with columns, a line edit or a button that can be on.
void markRemembered(QWidget *part);

/// The window that @p window belongs to, as an editor's block windows do; null for one on its own.
QWidget *ownerOf(const QWidget *window);

} // namespace devhost
