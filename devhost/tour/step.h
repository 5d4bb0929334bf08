#pragma once

#include <QRect>
#include <QString>
#include <QVector>

#include <functional>

namespace devhost::tour {

/// One thing that the tour does as a user would, and how it knows that it worked.
struct Step
{
    QString name; ///< as printed
    /// Does it. The answer is empty, or why it cannot be done. May run a dialog's event loop.
    std::function<QString()> act;
    /// Asked again and again: empty once the step is confirmed, else what is still missing.
    std::function<QString()> missing;
    QString picture; ///< name of the picture taken once confirmed; none when empty
    /// Brings to the front what is to be pictured and answers where on the screen it is.
    std::function<QRect()> area;
    /// From the act to the confirmation; generous, for a machine that has other work, too.
    int timeLimitMs = 60000;
};

using Steps = QVector<Step>;

} // namespace devhost::tour
