#pragma once

#include <QFrame>
#include <QVector>

#include <functional>

class QLabel;
class QToolButton;

namespace devhost {

/// A line at the top of the window for what lasts and the user may want to act on; of several notices the
/// newest is shown until it is put away. Its text can be selected, so that a command in it can be copied.
class NoticeBar : public QFrame
{
    Q_OBJECT

public:
    explicit NoticeBar(QWidget *parent = nullptr);

    /// Shows a notice on the subject @p key, in place of an earlier one on it; an empty text takes that back.
    /// A button named @p actionText, unless that is empty, runs @p action.
    void setNotice(const QString &key, const QString &text, const QString &actionText = QString(),
                   const std::function<void()> &action = {});

private:
    struct Notice
    {
        QString key;
        QString text;
        QString actionText;
        std::function<void()> action;
    };

    void remove(const QString &key);
    void showNewest();

    QVector<Notice> m_notices; ///< the newest last
    QLabel *m_text;
    QLabel *m_others;
    QToolButton *m_action;
};

} // namespace devhost
