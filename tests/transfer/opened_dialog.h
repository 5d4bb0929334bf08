#pragma once

#include "host/px_device.h"
#include "tests/transfer/tftp_client.h"
#include "transfer/dev_list.h"
#include "transfer/update_dialog.h"
#include "transfer/update_texts.h"

#include <QLabel>
#include <QPushButton>
#include <QTableView>

/// An address of this machine at which an opened dialog can be reached.
const QHostAddress server(QStringLiteral("127.0.0.2"));

/// The update dialog as the editor opens it, offering pattern(size).
class OpenedDialog
{
public:
    explicit OpenedDialog(int size, const UpdateDialog::Intervals &intervals = {})
        : m_dialog(new UpdateDialog)
    {
        m_dialog->setIntervals(intervals);
        m_device.setName(QStringLiteral("Studio A"));
        m_dialog->setDevice(&m_device);
        m_dialog->setFile(QStringLiteral("/home/me/ding.wav"), pattern(size));
        m_dialog->show();
    }

    UpdateDialog *operator->() const { return m_dialog.data(); }
    UpdateDialog *get() const { return m_dialog.data(); }
    void destroy() { m_dialog.reset(); }
    QString label(const char *name) const
    {
        return m_dialog->findChild<QLabel *>(QLatin1String(name))->text();
    }
    QString status() const { return label("status_label"); }
    QPushButton *close() const
    {
        return m_dialog->findChild<QPushButton *>(QStringLiteral("close_pushButton"));
    }
    QTableView *table() const { return m_dialog->findChild<QTableView *>(QStringLiteral("tableView")); }
    UpdateDev *row() const { return m_dialog->findChild<DevList *>()->deviceAt(0); }
    int transfers() const { return m_dialog->findChildren<VmTftp *>().size(); }

private:
    pxDevice m_device;
    QScopedPointer<UpdateDialog> m_dialog;
};
