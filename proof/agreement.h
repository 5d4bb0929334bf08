#pragma once

#include "proof/level_tap.h"

#include <QElapsedTimer>
#include <QStringList>
#include <QTimer>

namespace proof {

class Station;

/// What must be possible after all that went wrong: boxes answered, the editor open and its channel at rest,
/// Refresh reads the device again, and then every value shown is the one that the device holds.
class Agreement
{
public:
    /// @p draft as in differences().
    Agreement(Station *station, const QString &draft);

    /// Whether the block windows shall be open and agree as well; otherwise they are closed.
    void setWithBlocks(bool with) { m_withBlocks = with; }
    /// Whether Refresh is used first; otherwise what the windows show already must be right.
    void setRefreshing(bool refreshing) { m_refreshing = refreshing; }
    /// Works towards it for @p ms. What stood in the way at last; empty when all agrees.
    QStringList reach(int ms);

private:
    bool step();
    bool isUndisturbed();
    void leaveAlone();
    void refresh();

    Station *m_station;
    QString m_draft;
    QStringList m_obstacle;
    QTimer m_boxes;
    LevelTap m_levels;
    QElapsedTimer m_sinceLook;
    bool m_refreshing = true;
    bool m_withBlocks = false;
    bool m_blocksShown = false;
    bool m_compared = false; ///< since Refresh
    int m_refreshed = 0; ///< the number of the editor in which Refresh was clicked
};

} // namespace proof
