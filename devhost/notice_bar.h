#pragma once

#include <QFrame>

class QLabel;

namespace devhost {

/// A line at the top of the window for something lasting that the user may want to act on. Its text can be
/// selected, so that a command in it can be copied; a button puts it away.
class NoticeBar : public QFrame
{
    Q_OBJECT

public:
    explicit NoticeBar(QWidget *parent = nullptr);

    /// An empty text hides the bar.
    void setNotice(const QString &text);

private:
    QLabel *m_text;
};

} // namespace devhost
