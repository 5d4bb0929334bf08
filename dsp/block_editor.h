#pragma once

#include <QDialog>

#include <memory>

class DeviceBadge;
class SectionCaches;

/// What the seven block editors have in common: a non-modal window that asks its owner to be closed. The
/// owner answers close() by deleting the editor later.
class BlockEditor : public QDialog
{
    Q_OBJECT

public:
    explicit BlockEditor(QWidget *parent = nullptr);

    /// Shows the block's name in the window's title and in the form's heading, which stays hidden.
    void setBlockTitle(const QString &title);

    /// Shows whose block this is: windows of two devices have the same title.
    void setDeviceName(const QString &name);

    /// Keeps the caches that the editor reads for as long as it lives, which may be longer than their owner.
    void shareCaches(std::shared_ptr<const SectionCaches> caches);

    /// Also when it was minimised.
    void bringToFront();

    /// Escape and Ctrl+W: asks to be closed and stays visible until the owner does so.
    void reject() override;

public slots:
    /// Shows the section's values. Reports nothing as changed by the user.
    virtual void onDataChanged() = 0;
    /// Feeds the meters from a level datagram, where there are meters.
    virtual void onLevels(const QByteArray &bytes);
    /// A USB channel became available (@p type 1) or unavailable (0); other types are ignored.
    virtual void onUsbMode(int ch, int type);

signals:
    /// The user wants the window gone, by its frame or by a key.
    void close();

protected:
    /// What has the keyboard focus when the window opens; owned by the window. To be chosen so that a blank
    /// struck by mistake changes nothing.
    void startAt(QWidget *control) { m_start = control; }

    /// The badge that shows the device's name is the window's from here on.
    void adoptBadge(DeviceBadge *badge) { m_badge = badge; }

    void showEvent(QShowEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private:
    QWidget *m_start = nullptr;
    DeviceBadge *m_badge = nullptr;
    std::shared_ptr<const SectionCaches> m_caches;
};
