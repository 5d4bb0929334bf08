#pragma once

#include <QColor>
#include <QScopedPointer>
#include <QWidget>

class DeviceBadge;

namespace Ui {
class DspCornerHeader;
class DspHorizontalHeader;
class DspVerticalHeader;
} // namespace Ui

/// A header cell of the mixer, which can carry the colour of the kind of port that it names.
class MixerHeaderCell : public QWidget
{
    Q_OBJECT

public:
    explicit MixerHeaderCell(QWidget *parent = nullptr);

    /// Fills the header with @p color and writes on it in a dark colour, whatever the style sheet around it.
    void setColor(const QColor &color);

    /// The header of the row or column that the user is at stands out.
    void setLit(bool lit);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    bool m_lit = false;
};

/// The corner of the mixer, with the device's name and the buttons that work on all crosspoints.
class CornerHeaderCell : public QWidget
{
    Q_OBJECT

public:
    explicit CornerHeaderCell(QWidget *parent = nullptr);
    ~CornerHeaderCell() override;

    DeviceBadge *badge() const { return m_badge; }

signals:
    void uiReset();
    void uiDefault();

private slots:
    void on_reset_pushButton_clicked();
    void on_default_pushButton_clicked();

private:
    QScopedPointer<Ui::DspCornerHeader> m_ui;
    DeviceBadge *m_badge;
};

/// The heading of a column, which names a sink in two lines.
class HorizontalHeaderCell : public MixerHeaderCell
{
    Q_OBJECT

public:
    explicit HorizontalHeaderCell(QWidget *parent = nullptr);
    ~HorizontalHeaderCell() override;

    void setLabels(const QString &first, const QString &second);

private:
    QScopedPointer<Ui::DspHorizontalHeader> m_ui;
};

/// The heading of a row, which names a source.
class VerticalHeaderCell : public MixerHeaderCell
{
    Q_OBJECT

public:
    explicit VerticalHeaderCell(QWidget *parent = nullptr);
    ~VerticalHeaderCell() override;

    void setLabel(const QString &text);

private:
    QScopedPointer<Ui::DspVerticalHeader> m_ui;
};
