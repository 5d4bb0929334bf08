#include "simulator/player.h"

#include <QtGlobal>

namespace sim {

namespace {

struct Track
{
    const char *song;
    const char *artist;
    const char *album;
    int seconds;
};

constexpr Track playList[] = {
    {"Slow Tide", "Marla Quill", "Harbour Lights", 34},
    {"Lanterns", "Marla Quill", "Harbour Lights", 28},
    {"The Long Pier", "Marla Quill", "Harbour Lights", 41},
    {"Zugvögel über Eis", "Nordwind Quartett", "Jahreszeiten", 37},
    {"Regenlied", "Nordwind Quartett", "Jahreszeiten", 25},
    {"Copper & Rye", "The Ferrymen", "Four Bridges \"Live\"", 30},
    {"Half Past Amber", "The Ferrymen", "Four Bridges \"Live\"", 32},
    {"夜の電車", "Sora Mizuki", "終電", 39},
};

constexpr int trackCount = int(sizeof playList / sizeof *playList);
constexpr int loudest = 15;
constexpr double dbPerStep = 3.0;

} // namespace

QString Player::song() const
{
    return QString::fromUtf8(playList[m_track].song);
}

QString Player::artist() const
{
    return QString::fromUtf8(playList[m_track].artist);
}

QString Player::album() const
{
    return QString::fromUtf8(playList[m_track].album);
}

double Player::volumeDb() const
{
    return m_volume == 0 ? -100.0 : dbPerStep * (m_volume - loudest);
}

void Player::louder()
{
    m_volume = qMin(m_volume + 1, loudest);
}

void Player::softer()
{
    m_volume = qMax(m_volume - 1, 0);
}

void Player::advance(int ms)
{
    if (!m_playing)
        return;
    m_played += ms;
    if (m_played >= playList[m_track].seconds * 1000)
        next();
}

void Player::skip(int tracks)
{
    m_track = (m_track + tracks + trackCount) % trackCount;
    m_played = 0;
}

} // namespace sim
