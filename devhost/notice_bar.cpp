#include "devhost/notice_bar.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>
#include <QVariant>

#include <algorithm>

namespace devhost {

namespace {

constexpr int MostNotices = 20;

}

NoticeBar::NoticeBar(QWidget *parent)
    : QFrame(parent)
    , m_text(new QLabel(this))
    , m_others(new QLabel(this))
    , m_action(new QToolButton(this))
{
    setObjectName(QStringLiteral("noticeBar"));
    m_text->setObjectName(QStringLiteral("notice"));
    m_text->setTextFormat(Qt::PlainText);
    m_text->setWordWrap(true);
    m_text->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    m_others->setProperty("role", QStringLiteral("caption"));
    auto *dismiss = new QToolButton(this);
    dismiss->setText(tr("Dismiss"));
    dismiss->setToolTip(tr("Put this notice away"));
    connect(dismiss, &QToolButton::clicked, this, [this] { remove(m_notices.last().key); });
    connect(m_action, &QToolButton::clicked, this, [this] {
        const std::function<void()> action = m_notices.last().action;
        action(); // which may take the notice back
    });
    auto *row = new QHBoxLayout(this);
    row->addWidget(m_text, 1);
    row->addWidget(m_others);
    row->addWidget(m_action);
    row->addWidget(dismiss);
    hide();
}

void NoticeBar::setNotice(const QString &key, const QString &text, const QString &actionText,
                          const std::function<void()> &action)
{
    remove(key);
    if (text.isEmpty())
        return;
    m_notices.append({key, text, actionText, action});
    if (m_notices.size() > MostNotices)
        m_notices.removeFirst();
    showNewest();
}

void NoticeBar::remove(const QString &key)
{
    const auto end = std::remove_if(m_notices.begin(), m_notices.end(),
                                    [&key](const Notice &notice) { return notice.key == key; });
    m_notices.erase(end, m_notices.end());
    showNewest();
}

void NoticeBar::showNewest()
{
    setVisible(!m_notices.isEmpty());
    if (m_notices.isEmpty())
        return;
    const Notice &newest = m_notices.last();
    m_text->setText(newest.text);
    m_others->setText(tr("%1 more").arg(m_notices.size() - 1));
    m_others->setVisible(m_notices.size() > 1);
    m_action->setText(newest.actionText);
    m_action->setVisible(!newest.actionText.isEmpty());
}

} // namespace devhost
