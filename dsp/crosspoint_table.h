#pragma once

#include <QHash>
#include <QSharedPointer>
#include <QTableWidget>

class AccessibleCrosspoints;

/// A grid of widgets. Its first row and column, the headers, stay in place while the rest scrolls below them.
/// Arrow keys go from one cell to the next that can have the keyboard; with a modifier they are the cell's
/// own.
class CrosspointTable : public QTableWidget
{
    Q_OBJECT

public:
    explicit CrosspointTable(QWidget *parent = nullptr);
    ~CrosspointTable() override;

    /// Takes the widget over. Of its parts only the focus proxy, where it has one, moves on by arrow keys.
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
    bool goOn(const QPoint &from, int key);
    void showCell(const QPoint &place);
    void pinHeaders();

    QSharedPointer<AccessibleCrosspoints> m_accessible;
    QHash<QObject *, QPoint> m_places; ///< column and row of each cell's widget
    QPoint m_hovered;
    QPoint m_focused;
};
