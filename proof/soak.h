#pragma once

#include "proof/loop_watch.h"
#include "proof/object_census.h"
#include "proof/random_user.h"
#include "proof/station.h"

#include <memory>
#include <vector>

namespace proof {

struct SoakPlan
{
    int devices = 4;
    int minutes = 60;
    int rounds = 100; ///< after each all work stops for a look at what the program holds
    int pauseMs = 200; ///< of each user between two acts
    quint32 seed = 1;
    double mostGrowth = 1.02; ///< of memory, timers and descriptors from the second quarter to the last
};

/// Random users at several devices for a long time, with devices that are lost and return, phones that pair,
/// presets, snapshots and uploads. In the end the program must hold no more than it did after a quarter of
/// the time, every window shows what its device holds, and no message of a user's was lost or doubled.
class Soak
{
public:
    Soak(PlexoPluginFactory *factory, const SoakPlan &plan);

    /// Prints a line a round. What was not in order; empty when all is well.
    QStringList run();

private:
    struct Place
    {
        std::unique_ptr<Station> station;
        std::unique_ptr<RandomUser> user;
    };

    bool start();
    void work(int round);
    bool rest();
    void agree(const Place &place);
    void look(int round);
    void judge();
    void compareClasses();

    SoakPlan m_plan;
    std::vector<Place> m_places;
    QRandomGenerator m_dice;
    LoopWatch m_loop;
    QList<Census> m_looks;
    QStringList m_problems;
};

} // namespace proof
