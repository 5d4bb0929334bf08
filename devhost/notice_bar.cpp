#include "devhost/notice_bar.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>

namespace devhost {

NoticeBar::NoticeBar(QWidget *parent)
    : QFrame(parent)
    , m_text(new QLabel(this))
{
    setObjectName(QStringLiteral("noticeBar"));
    m_text->setTextFormat(Qt::PlainText);
    m_text->setWordWrap(true);
    m_text->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    auto *dismiss = new QToolButton(this);
    dismiss->setText(tr("Dismiss"));
    dismiss->setToolTip(tr("Put this notice away; Help shows it again"));
    connect(dismiss, &QToolButton::clicked, this, &QWidget::hide);
    auto *row = new QHBoxLayout(this);
    row->addWidget(m_text, 1);
    row->addWidget(dismiss);
    hide();
}

void NoticeBar::setNotice(const QString &text)
{
    m_text->setText(text);
    setVisible(!text.isEmpty());
}

} // namespace devhost
