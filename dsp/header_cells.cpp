#include "dsp/header_cells.h"

#include "dsp/device_badge.h"
#include "ui_dsp_corner_header.h"
#include "ui_dsp_horizontal_header.h"
#include "ui_dsp_vertical_header.h"

#include <QPainter>

#include <utility>

MixerHeaderCell::MixerHeaderCell(QWidget *parent)
    : QWidget(parent)
{
    // Without it a style sheet's background is not painted on a class of our own.
    setAttribute(Qt::WA_StyledBackground);
}

void MixerHeaderCell::setColor(const QColor &color)
{
    setStyleSheet(QStringLiteral("background-color: #%1;").arg(color.rgba(), 8, 16, QLatin1Char('0')));
    const QString darkText = QStringLiteral("color: #1c1c1c;");
    for (QLabel *label : findChildren<QLabel *>())
        label->setStyleSheet(darkText);
    for (QAbstractButton *button : findChildren<QAbstractButton *>())
        button->setStyleSheet(darkText);
}

void MixerHeaderCell::setLit(bool lit)
{
    if (std::exchange(m_lit, lit) == lit)
        return;
    for (QLabel *label : findChildren<QLabel *>()) {
        QFont font = label->font();
        font.setBold(lit);
        label->setFont(font);
    }
    update();
}

void MixerHeaderCell::paintEvent(QPaintEvent *)
{
    if (!m_lit)
        return;
    const QList<QLabel *> labels = findChildren<QLabel *>();
    QPainter painter(this);
    painter.setPen(QPen(labels.first()->palette().color(QPalette::WindowText), 2.0));
    painter.drawRect(QRectF(rect()).adjusted(2.0, 2.0, -2.0, -2.0));
}

CornerHeaderCell::CornerHeaderCell(QWidget *parent)
    : QWidget(parent)
    , m_ui(new Ui::DspCornerHeader)
    , m_badge(new DeviceBadge({}, this))
{
    setAttribute(Qt::WA_StyledBackground);
    m_ui->setupUi(this);
    m_ui->default_pushButton->hide();
    m_badge->setGeometry(5, 4, width() - 10, 20);
}

CornerHeaderCell::~CornerHeaderCell() = default;

void CornerHeaderCell::on_reset_pushButton_clicked()
{
    emit uiReset();
}

void CornerHeaderCell::on_default_pushButton_clicked()
{
    emit uiDefault();
}

HorizontalHeaderCell::HorizontalHeaderCell(QWidget *parent)
    : MixerHeaderCell(parent)
    , m_ui(new Ui::DspHorizontalHeader)
{
    m_ui->setupUi(this);
}

HorizontalHeaderCell::~HorizontalHeaderCell() = default;

void HorizontalHeaderCell::setLabels(const QString &first, const QString &second)
{
    m_ui->label->setText(first);
    m_ui->label_2->setText(second);
}

VerticalHeaderCell::VerticalHeaderCell(QWidget *parent)
    : MixerHeaderCell(parent)
    , m_ui(new Ui::DspVerticalHeader)
{
    m_ui->setupUi(this);
}

VerticalHeaderCell::~VerticalHeaderCell() = default;

void VerticalHeaderCell::setLabel(const QString &text)
{
    m_ui->label->setText(text);
}
