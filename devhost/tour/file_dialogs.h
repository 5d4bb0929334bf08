#pragma once

#include <QString>

class QFileDialog;

namespace devhost::tour {

/// The file dialog on screen; null when there is none.
QFileDialog *fileDialog();

/// Types the path into the file dialog on screen and confirms it. The answer is empty, or what is in the way.
QString chooseFile(const QString &path);

} // namespace devhost::tour
