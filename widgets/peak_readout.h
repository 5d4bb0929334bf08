#pragma once

#include <QAbstractButton>

class VMMeter;

/// The loudest level that a meter has shown, as a number: red once it has clipped, and cleared with the
/// meter's clip mark by a click on either.
class PeakReadout : public QAbstractButton
{
    Q_OBJECT

public:
    /// The meter outlives the read-out.
    explicit PeakReadout(VMMeter *meter, QWidget *parent = nullptr);

    QSize sizeHint() const override { return {34, 15}; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void showMaximum();

    VMMeter *m_meter;
};
