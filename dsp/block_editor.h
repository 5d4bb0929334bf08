#pragma once

#include <QDialog>

/// What the seven block editors have in common: a non-modal window that asks its owner to be closed. The
/// owner answers close() by deleting the editor later.
class BlockEditor : public QDialog
{
    Q_OBJECT

public:
    using QDialog::QDialog;

    /// Shows the block's name in the window's title and in the form's heading, which stays hidden.
    void setBlockTitle(const QString &title);

    /// Escape: asks to be closed and stays visible until the owner does so.
    void reject() override;

signals:
    /// The user wants the window gone, by its frame or by Escape.
    void close();

protected:
    void closeEvent(QCloseEvent *event) override;
};
