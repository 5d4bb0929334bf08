#include "tests/support/box_answerer.h"

#include <QApplication>
#include <QPointer>
#include <QPushButton>

namespace support {

namespace {

QString plain(const QAbstractButton *button)
{
    return button ? button->text().remove(QLatin1Char('&')) : QString();
}

SeenBox describe(const QMessageBox &box)
{
    SeenBox seen{box.windowTitle(), box.text(), box.informativeText(), box.detailedText(), {}, {},
                 box.icon()};
    for (const QAbstractButton *button : box.buttons()) {
        if (box.standardButton(const_cast<QAbstractButton *>(button)) != QMessageBox::NoButton)
            seen.buttons.append(plain(button));
    }
    seen.buttons.sort();
    seen.defaultButton = plain(box.defaultButton());
    return seen;
}

} // namespace

BoxAnswerer::BoxAnswerer(QMessageBox::StandardButton answer)
    : m_answer(answer)
{
    connect(&m_poll, &QTimer::timeout, this, &BoxAnswerer::answerOpenBox);
    m_poll.start(5);
}

void BoxAnswerer::answerOpenBox()
{
    QPointer<QMessageBox> box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
    if (!box || !box->isVisible())
        return;
    QAbstractButton *button = box->button(m_answer);
    if (!button)
        return;
    m_seen.append(describe(*box));
    if (m_whileOpen)
        m_whileOpen();
    if (box)
        button->click();
}

} // namespace support
