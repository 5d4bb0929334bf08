#include "proof/agreement.h"

#include "proof/answers.h"
#include "proof/shown_values.h"
#include "proof/station.h"

#include <QAbstractButton>
#include <QApplication>
#include <QTest>

#include <algorithm>

namespace proof {

namespace {

constexpr int PauseMs = 250; // between two looks

bool isAbout(const QString &difference, std::initializer_list<const char *> names)
{
    return std::any_of(names.begin(), names.end(),
                       [&](const char *name) { return difference.startsWith(QLatin1String(name)); });
}

/// What the editor may show until it reads everything anew: what waits for Apply or Enter or stands beside
/// it, and the phone of an interface that is switched off.
bool isLeftAlone(const QString &difference, bool hasBluetooth)
{
    return isAbout(difference, {"dev_", "multicast_", "en_multicast_", "tone "})
        || (!hasBluetooth
            && isAbout(difference,
                       {"bt_status_", "bt_connected_", "bt_album_", "bt_artist_", "bt_track_", "bt_sig_",
                        "the list of paired", "paired phone"}));
}

} // namespace

Agreement::Agreement(Station *station, const QString &draft)
    : m_station(station)
    , m_draft(draft)
    , m_levels(*station)
{
    QObject::connect(&m_boxes, &QTimer::timeout, &m_boxes, &answerOpenBox);
}

QStringList Agreement::reach(int ms)
{
    m_boxes.start(10);
    m_levels.listen();
    const bool agreed = QTest::qWaitFor([this] { return step(); }, ms);
    m_boxes.stop();
    return agreed ? QStringList() : m_obstacle;
}

/// One look; false when another one is needed.
bool Agreement::step()
{
    if (!isUndisturbed())
        return false;
    // A look holds the event loop up; the editor gets some time to take what has come meanwhile.
    if (m_sinceLook.isValid() && !m_sinceLook.hasExpired(PauseMs))
        return false;
    m_levels.hear();
    if (m_refreshing && m_refreshed != m_station->opened()) {
        refresh();
        m_obstacle = QStringList{QStringLiteral("Refresh does not come to its end")};
        return false;
    }
    if (m_refreshing ? !m_station->isLive() : !m_station->isCalm()) {
        // Polls come and go; what differs between them is worth more.
        if (!m_compared)
            m_obstacle = QStringList{m_station->whatWaits()};
        return false;
    }
    if (m_refreshing && m_withBlocks && !m_blocksShown) {
        m_station->openBlocks(); // the mixer shows the tone generator anew whenever its block is clicked
        m_blocksShown = true;
    }
    m_compared = true;
    m_obstacle = differences(*m_station, m_draft) + m_levels.differences();
    if (!m_refreshing)
        leaveAlone();
    m_sinceLook.restart();
    return m_obstacle.isEmpty();
}

void Agreement::leaveAlone()
{
    const bool hasBluetooth
        = m_station->editor()->findChild<QWidget *>(QStringLiteral("bt_tabWidget"))->isEnabled();
    QStringList rest;
    std::copy_if(m_obstacle.begin(), m_obstacle.end(), std::back_inserter(rest),
                 [=](const QString &difference) { return !isLeftAlone(difference, hasBluetooth); });
    m_obstacle = rest;
}

bool Agreement::isUndisturbed()
{
    if (QApplication::activeModalWidget()) {
        m_obstacle = QStringList{QStringLiteral("a box stays open")};
        return false;
    }
    // After a reboot the device answers again in about three seconds.
    if (m_station->link()->isCut() || !m_station->process().isUp()) {
        m_obstacle = QStringList{QStringLiteral("the device does not answer")};
        return false;
    }
    if (!m_station->isOpen())
        m_station->open();
    if (!m_refreshing || m_refreshed == m_station->opened())
        return true;
    m_obstacle = QStringList{m_station->whatWaits()};
    return m_station->isIdle();
}

void Agreement::refresh()
{
    m_levels.listen();
    m_refreshed = m_station->opened();
    m_compared = false;
    m_blocksShown = false;
    if (m_withBlocks)
        m_station->openBlocks(); // what is open follows
    else
        for (QWidget *window : m_station->windows().mid(1))
            QTest::keyClick(window, Qt::Key_Escape);
    auto *button = m_station->editor()->findChild<QAbstractButton *>(QStringLiteral("refresh_pushButton"));
    QTest::mouseClick(button, Qt::LeftButton);
}

} // namespace proof
