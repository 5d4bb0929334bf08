#pragma once

#include <QColor>
#include <QFont>
#include <QString>
#include <QVector>

class QTableView;
class QWidget;

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

/// Gives @p widget letters of one width, in the text size in use and in each that is worn later.
void wearFixedFont(QWidget *widget);

/// Makes columns of @p view as wide as so many digits, and its rows @p rowMargin higher than its text. When
/// another text size is worn, both change with it, what the user made wider included.
void sizeByText(QTableView *view, const QVector<int> &digits, int rowMargin);

} // namespace devhost
