#pragma once

#include <QColor>
#include <QFont>
#include <QString>

namespace devhost {

/// How the host and the editors look that it opens.
struct Look
{
    bool light = false; ///< else dark
    int textPercent = 100; ///< of the system's text size
};

/// Gives the whole application the style sheet, and a palette for what no style sheet reaches. Windows that
/// adopted the sheet before, as editors do, get the new one.
void wearLook(const Look &look);

/// What the application wears.
Look wornLook();

/// A colour of the style in use, by its name in the style sheet's tables; invalid for an unknown name, or
/// before any look is worn.
QColor lookColor(const char *name);

/// For texts whose letters stand below each other, in the text size in use.
QFont fixedFont();

} // namespace devhost
