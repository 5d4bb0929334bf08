#pragma once

#include "devhost/refusals.h"

#include <QDialog>

namespace devhost {

/// The list of what a device refused to change.
class RefusalDialog : public QDialog
{
    Q_OBJECT

public:
    RefusalDialog(const QString &device, const Refusals &refusals, QWidget *window);
};

} // namespace devhost
