#pragma once

#include <QColor>
#include <QWidget>

/// An indicator light: a filled, glowing disc when on, a hollow ring when off.
class VmLED : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(bool state READ state WRITE setState)
    Q_PROPERTY(QColor color READ color WRITE setColor)
    /// Millimetres at the logical resolution of the screen.
    Q_PROPERTY(double diameter READ diameter WRITE setDiameter)

public:
    explicit VmLED(QWidget *parent = nullptr);

    bool state() const { return m_on; }
    QColor color() const { return m_color; }
    double diameter() const { return m_diameter; }

    /// On (true) or off.
    void setState(bool on);
    /// Colour of the light when on; red until set.
    void setColor(const QColor &color);
    /// Millimetres at the logical resolution of the screen; never drawn smaller than 10 pixels.
    void setDiameter(double millimetres);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    int pixels() const;
    void paintLit(QPainter &painter, const QRectF &light, const QColor &color) const;
    void paintDark(QPainter &painter, const QRectF &light, const QColor &color) const;

    bool m_on = false;
    QColor m_color{226, 48, 40};
    double m_diameter = 3.0;
};
