#pragma once

#include <QHash>
#include <QSharedPointer>
#include <QTableWidget>

class AccessibleCrosspoints;

/// A grid of widgets. Its first row and column, the headers, stay in place while the rest scrolls below them.
/// Arrow keys go from one cell to the next that can have the keyboard; with a modifier they are the cell's
/// own. The tab key stops once in the grid, at the cell that had the keyboard last.
class CrosspointTable : public QTableWidget
{
    Q_OBJECT

public:
    explicit CrosspointTable(QWidget *parent = nullptr);
    ~CrosspointTable() override;

    /// Takes the widget over. Its focus proxy makes it a cell of the grid; a widget without one is a header.
    void setCell(int row, int column, QWidget *widget);

    bool eventFilter(QObject *watched, QEvent *event) override;

signals:
    /// The cell below the pointer, else the one with the keyboard; -1 when it is neither.
    void userAt(int row, int column);

protected:
    void scrollContentsBy(int dx, int dy) override;
    void updateGeometries() override;
    void updateEditorGeometries() override;

private:
    QPoint placeOf(QObject *part) const;
    void moveTabStop(QWidget *part);
    bool goOn(const QPoint &from, int key);
    void showCell(const QPoint &place);
    void pinHeaders();

    QSharedPointer<AccessibleCrosspoints> m_accessible;
    QHash<QObject *, QPoint> m_places; ///< column and row of each cell's widget
    QPoint m_hovered;
    QPoint m_focused;
    QWidget *m_tabStop = nullptr; ///< a focus proxy
};
