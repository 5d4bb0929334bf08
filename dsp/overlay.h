#pragma once

#include <QColor>
#include <QPointer>
#include <QWidget>

/// A translucent sheet of one colour that covers the widget it is a child of.
class Overlay : public QWidget
{
    Q_OBJECT

public:
    explicit Overlay(const QColor &color, QWidget *parent = nullptr);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QColor m_color;
};

/// An event filter that covers the widget it is installed on with an Overlay while that widget is disabled.
/// It watches one widget and consumes no event. The overlay belongs to the watched widget.
class OverlayFactoryFilter : public QObject
{
    Q_OBJECT

public:
    explicit OverlayFactoryFilter(const QColor &color, QObject *parent = nullptr);

    /// The red, about 30 % opaque, that marks strips and cells that are not available.
    static QColor unavailableColor() { return QColor(255, 0, 0, 76); }

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void followEnabledState(QWidget *widget);
    void followSize(QWidget *widget);

    QColor m_color;
    QPointer<Overlay> m_overlay;
};
