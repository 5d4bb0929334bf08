#pragma once

#include <QMenu>

class QMenuBar;

namespace devhost {

class Host;
class NoticeBar;

/// Keys, versions, plugins, and whether voice cues can be uploaded.
class HelpMenu : public QMenu
{
    Q_OBJECT

public:
    /// None of these is owned. The keys listed are those of the menus in @p menuBar.
    HelpMenu(Host *host, NoticeBar *notice, QMenuBar *menuBar);

private:
    void addEntry(const QString &text, const QKeySequence &keys, const QString &tip,
                  void (HelpMenu::*slot)());
    void showKeys();
    void showPlugins();
    void showUploadAdvice();
    void showAbout();
    void tell(const QString &title, const QString &text);

    Host *m_host;
    NoticeBar *m_notice;
    QMenuBar *m_menuBar;
};

} // namespace devhost
