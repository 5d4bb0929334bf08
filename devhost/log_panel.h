#pragma once

#include "devhost/log_filter.h"

#include <QSet>
#include <QTimer>
#include <QWidget>

class QComboBox;
class QHBoxLayout;
class QLabel;
class QLineEdit;
class QTableView;
class QToolButton;

namespace devhost {

class LogDetail;
class RequestWatch;

/// The communication log on screen: what of it is shown, the whole of a message, how devices answer, and
/// copying and saving.
class LogPanel : public QWidget
{
    Q_OBJECT

public:
    /// Neither is owned; @p requests counts what the figures tell.
    LogPanel(CommunicationLog *log, const RequestWatch *requests, QWidget *parent = nullptr);

    void focusFilter();
    void copySelected();
    /// Asks for a file and writes the shown entries into it, as JSON lines if its name ends in ".jsonl".
    void saveShown();

signals:
    /// A sentence for the user.
    void problem(const QString &sentence);
    void saved(const QString &sentence);

protected:
    void changeEvent(QEvent *event) override;

private:
    void setUpView();
    void wearFont();
    void setUpFollowing();
    QHBoxLayout *createFilterRow();
    QHBoxLayout *createBottomRow();
    QToolButton *addButton(QHBoxLayout *row, const QString &text, const QString &tip);
    QToolButton *addSwitch(QHBoxLayout *row, const QString &name, const QString &text, const QString &tip,
                           bool on);
    void addShownSwitch(QHBoxLayout *row, LogFilter::Kind kind, const QString &name, const QString &text,
                        const QString &tip);
    void followIfWanted();
    void showChosen();
    void noteDevices(int first, int last);
    void showFigures();
    QList<int> selectedRows() const;

    CommunicationLog *m_log;
    const RequestWatch *m_requests;
    LogFilter *m_filter;
    QTableView *m_view;
    LogDetail *m_detail;
    QLineEdit *m_filterEdit;
    QComboBox *m_devices;
    QLabel *m_figures;
    QToolButton *m_follow = nullptr;
    QSet<QString> m_knownDevices;
    QTimer m_following;
};

} // namespace devhost
