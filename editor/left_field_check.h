#pragma once

#include <QLineEdit>
#include <QObject>
#include <QPointer>
#include <QTimer>

#include <functional>

/// Puts off the check of a line edit that loses the keyboard focus, because the check may open a message box:
/// inside Qt's focus and activation handling such a box could have the widgets destroyed under Qt's feet. It
/// is made as soon as control is back in the event loop, or, when the user has left the window, as soon as
/// they are back in it.
class LeftFieldCheck : public QObject
{
    Q_OBJECT

public:
    using Check = std::function<void()>;

    /// @p window holds the fields and owns this object.
    explicit LeftFieldCheck(QWidget *window);

    void watch(QLineEdit *field);
    /// To be called at the end of an edit. Makes the check at once unless the field is just being left.
    void check(QLineEdit *field, const Check &check);
    /// The user is told of what is in the field: a check put off before does not tell it again, nor does one
    /// for leaving the window with the same text.
    void noteTold(QLineEdit *field);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void handleFocusOut(QLineEdit *field, Qt::FocusReason reason);
    void checkIfPossible();

    QWidget *m_window;
    QPointer<QLineEdit> m_left; ///< until control is back in the event loop
    bool m_leftWindow = false; ///< it was left together with its window
    QPointer<QLineEdit> m_pendingField;
    Check m_pending; ///< empty when nothing is put off
    QPointer<QLineEdit> m_toldField;
    QString m_toldText;
    QTimer m_timer;
};
