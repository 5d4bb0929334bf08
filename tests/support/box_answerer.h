#pragma once

#include <QAbstractButton>
#include <QMessageBox>
#include <QObject>
#include <QStringList>
#include <QTimer>

#include <functional>

namespace support {

/// What a message box showed when the answerer found it.
struct SeenBox
{
    QString title;
    QString text;
    QString informativeText;
    QString detailedText;
    QStringList buttons; ///< button texts without mnemonics, sorted
    QString defaultButton;
    QMessageBox::Icon icon = QMessageBox::NoIcon;
};

/// Answers the message boxes that appear while it lives with one standard button, and keeps what each
/// showed so that the test can check texts and buttons. A box without that button is left open, so that
/// the test fails by its time-out instead of passing on a wrong box.
class BoxAnswerer : public QObject
{
public:
    explicit BoxAnswerer(QMessageBox::StandardButton answer);

    /// Runs before the answer is given, while the box is still open.
    void setWhileOpen(std::function<void()> action) { m_whileOpen = std::move(action); }

    const QList<SeenBox> &seen() const { return m_seen; }

private:
    void answerOpenBox();

    QMessageBox::StandardButton m_answer;
    std::function<void()> m_whileOpen;
    QList<SeenBox> m_seen;
    QTimer m_poll;
};

} // namespace support
