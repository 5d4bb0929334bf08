#include "editor/left_field_check.h"

#include <QApplication>
#include <QFocusEvent>

#include <utility>

namespace {

constexpr int RetryMs = 20;

/// A box now would take the release of a button, or cover another dialog.
bool isUserBusy()
{
    return QGuiApplication::mouseButtons() != Qt::NoButton || QApplication::activePopupWidget()
        || QApplication::activeModalWidget();
}

} // namespace

LeftFieldCheck::LeftFieldCheck(QWidget *window)
    : QObject(window)
    , m_window(window)
{
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, &LeftFieldCheck::checkIfPossible);
    window->installEventFilter(this);
}

void LeftFieldCheck::watch(QLineEdit *field)
{
    field->installEventFilter(this);
}

bool LeftFieldCheck::eventFilter(QObject *watched, QEvent *event)
{
    auto *field = qobject_cast<QLineEdit *>(watched);
    if (field && event->type() == QEvent::FocusOut)
        handleFocusOut(field, static_cast<QFocusEvent *>(event)->reason());
    else if (event->type() == QEvent::WindowActivate || event->type() == QEvent::Show)
        m_timer.start(0);
    return QObject::eventFilter(watched, event);
}

void LeftFieldCheck::handleFocusOut(QLineEdit *field, Qt::FocusReason reason)
{
    m_left = field;
    m_leftWindow = reason == Qt::ActiveWindowFocusReason;
    m_timer.start(0);
}

void LeftFieldCheck::check(QLineEdit *field, const Check &check)
{
    if (m_left != field) {
        check();
        return;
    }
    // A box takes the focus late under some window managers: what it was about needs no second one.
    const bool told = m_leftWindow && m_toldField == field && m_toldText == field->text();
    if (told || m_pending)
        return;
    m_pendingField = field;
    m_pending = check;
}

void LeftFieldCheck::noteTold(QLineEdit *field)
{
    m_toldField = field;
    m_toldText = field->text();
    if (m_pendingField == field)
        m_pending = nullptr;
}

void LeftFieldCheck::checkIfPossible()
{
    m_left = nullptr;
    // Otherwise the user is elsewhere; their return starts the timer.
    if (!m_pending || !m_window->isVisible() || !m_window->isActiveWindow())
        return;
    if (isUserBusy()) {
        m_timer.start(RetryMs);
        return;
    }
    // The window may be destroyed within.
    const Check pending = std::exchange(m_pending, nullptr);
    pending();
}
