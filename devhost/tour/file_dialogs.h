#pragma once

#include <QString>

#include <functional>

class QFileDialog;

namespace devhost::tour {

/// The file dialog on screen; null when there is none.
QFileDialog *fileDialog();

/// Chooses the file in a dialog that has just opened: to be asked until the answer is empty, which is when
/// the dialog is gone. A file dialog goes on filling itself in the background, tells nobody when it is done
/// and overwrites what was typed meanwhile, so it gets a moment first, and another try when that was lost.
std::function<QString()> untilChosen(const QString &path);

} // namespace devhost::tour
