#include "proof/agreement.h"

#include "proof/answers.h"
#include "proof/shown_values.h"
#include "proof/station.h"

#include <QAbstractButton>
#include <QApplication>
#include <QTest>

namespace proof {

Agreement::Agreement(Station *station, const QString &draft)
    : m_station(station)
    , m_draft(draft)
{
    QObject::connect(&m_boxes, &QTimer::timeout, &m_boxes, &answerOpenBox);
}

QStringList Agreement::reach(int ms)
{
    m_boxes.start(10);
    const bool agreed = QTest::qWaitFor([this] { return step(); }, ms);
    m_boxes.stop();
    return agreed ? QStringList() : m_obstacle;
}

/// One look; false when another one is needed.
bool Agreement::step()
{
    if (!isUndisturbed())
        return false;
    if (m_refreshed != m_station->opened()) {
        refresh();
        m_obstacle = QStringList{QStringLiteral("Refresh does not come to its end")};
        return false;
    }
    if (!m_station->isLive())
        return false;
    if (m_withBlocks && !m_blocksShown) {
        m_station->openBlocks(); // the mixer shows the tone generator anew whenever its block is clicked
        m_blocksShown = true;
    }
    m_obstacle = differences(*m_station, m_draft);
    return m_obstacle.isEmpty();
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
    if (m_refreshed == m_station->opened())
        return true;
    m_obstacle = QStringList{QStringLiteral("the channel does not come to rest")};
    return m_station->isIdle();
}

void Agreement::refresh()
{
    m_refreshed = m_station->opened();
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
