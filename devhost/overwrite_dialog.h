#pragma once

#include "devhost/snapshot_changes.h"

#include <QDialog>

namespace devhost {

/// Asks whether a device may be overwritten, and shows setting by setting what would change.
class OverwriteDialog : public QDialog
{
    Q_OBJECT

public:
    OverwriteDialog(const QString &question, const QVector<SnapshotChange> &changes, QWidget *window);

    QString question() const { return m_question; }

private:
    QWidget *createList(const QVector<SnapshotChange> &changes);
    QWidget *createButtons();

    QString m_question;
};

} // namespace devhost
