#pragma once

#include <QColor>
#include <QWidget>

/// Says which device a block editor belongs to, by the device's name beside the colour of the block.
class DeviceBadge : public QWidget
{
    Q_OBJECT

public:
    /// Without a valid colour the badge shows the name alone.
    explicit DeviceBadge(const QColor &color = {}, QWidget *parent = nullptr);

    void setName(const QString &name);

    QSize sizeHint() const override { return {80, 20}; }
    QSize minimumSizeHint() const override { return {40, 20}; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QColor m_color;
    QString m_name;
};
