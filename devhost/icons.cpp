#include "devhost/icons.h"

#include "devhost/look.h"

#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>

namespace devhost {

namespace {

constexpr qreal Grid = 16; // the units of the drawings below

void line(QPainterPath *path, std::initializer_list<QPointF> points)
{
    path->moveTo(*points.begin());
    for (const QPointF &point : points)
        path->lineTo(point);
}

/// An arrow from one height to another, above or below a tray.
void arrow(QPainterPath *path, qreal from, qreal to)
{
    const qreal back = to > from ? -3 : 3;
    line(path, {{8, from}, {8, to}});
    line(path, {{5, to + back}, {8, to}, {11, to + back}});
}

/// Numbered drawers: what a device keeps by itself.
void drawers(QPainterPath *path)
{
    path->addRoundedRect(QRectF(2, 9.5, 12, 4.5), 1, 1);
    line(path, {{6.5, 11.75}, {9.5, 11.75}});
}

QPainterPath drawing(Picture picture)
{
    QPainterPath path;
    switch (picture) {
    case Picture::Open: // a window with its bar
        path.addRoundedRect(QRectF(2, 3, 12, 10), 1.5, 1.5);
        line(&path, {{2, 6}, {14, 6}});
        break;
    case Picture::Close:
        line(&path, {{4, 4}, {12, 12}});
        line(&path, {{12, 4}, {4, 12}});
        break;
    case Picture::Save: // into a tray
        arrow(&path, 2, 9.5);
        line(&path, {{2.5, 9.5}, {2.5, 13.5}, {13.5, 13.5}, {13.5, 9.5}});
        break;
    case Picture::Load: // out of it
        arrow(&path, 10, 2.5);
        line(&path, {{2.5, 9.5}, {2.5, 13.5}, {13.5, 13.5}, {13.5, 9.5}});
        break;
    case Picture::Store:
        drawers(&path);
        arrow(&path, 1.5, 7);
        break;
    case Picture::Recall:
        drawers(&path);
        arrow(&path, 7.5, 2);
        break;
    case Picture::Faults: // lightning
        line(&path, {{9.5, 1.5}, {4, 9}, {8, 9}, {6.5, 14.5}, {12, 7}, {8, 7}, {9.5, 1.5}});
        break;
    case Picture::Refused: // a triangle with an exclamation mark
        line(&path, {{8, 2}, {14.5, 13.5}, {1.5, 13.5}, {8, 2}});
        line(&path, {{8, 6.5}, {8, 9.5}});
        line(&path, {{8, 11.5}, {8, 11.6}});
        break;
    }
    return path;
}

class DrawnEngine : public QIconEngine
{
public:
    explicit DrawnEngine(Picture picture)
        : m_picture(picture)
    {
    }

    void paint(QPainter *painter, const QRect &place, QIcon::Mode mode, QIcon::State) override
    {
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->translate(place.topLeft());
        painter->scale(place.width() / Grid, place.height() / Grid);
        painter->setPen(QPen(lookColor(colorFor(mode)), 1.4, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter->drawPath(drawing(m_picture));
        painter->restore();
    }

    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override
    {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, QRect(QPoint(), size), mode, state);
        return pixmap;
    }

    QIconEngine *clone() const override { return new DrawnEngine(m_picture); }

private:
    const char *colorFor(QIcon::Mode mode) const
    {
        if (m_picture == Picture::Refused)
            return "refused";
        if (mode == QIcon::Disabled)
            return "off";
        return mode == QIcon::Selected ? "selectedText" : "text";
    }

    Picture m_picture;
};

} // namespace

QIcon drawnIcon(Picture picture)
{
    return QIcon(new DrawnEngine(picture));
}

} // namespace devhost
