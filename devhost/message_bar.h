#pragma once

#include <QStringList>
#include <QWidget>

class QAbstractItemModel;
class QCompleter;
class QLabel;
class QLineEdit;
class QPushButton;

namespace devhost {

/// A line in which the user types a message for a device, byte for byte as it will be sent: a text that
/// begins with
/// "{" as it is, in any other one "\r", "\n", "\t", "\\" and "\x41" stand for one byte each. The arrow keys
/// bring back what was sent before; a path is completed from those seen.
class MessageBar : public QWidget
{
    Q_OBJECT

public:
    /// @p paths is not owned.
    explicit MessageBar(QAbstractItemModel *paths, QWidget *parent = nullptr);

    /// An empty name: there is none to send to.
    void setDevice(const QString &name);
    /// What became of the last message.
    void setState(const QString &text);
    void edit(const QByteArray &message);
    void takeFocus();

    /// What is sent for a typed text, and what to type for that to be sent.
    static QByteArray bytesOf(const QString &typed);
    static QString typedFor(const QByteArray &message);

signals:
    void sendRequested(const QString &device, const QByteArray &message);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void setUpField();
    void send();
    void recall(int step);
    void offerPaths();
    void complete(const QString &path);
    /// Where in the text the path begins that the cursor stands in; -1 when it stands in none.
    int pathStart() const;

    QString m_device;
    QLabel *m_target;
    QLineEdit *m_field;
    QPushButton *m_send;
    QLabel *m_state;
    QCompleter *m_completer;
    QStringList m_history; ///< the oldest first, then what is being typed
    int m_recalled = 0;
};

} // namespace devhost
