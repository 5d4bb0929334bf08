#include "dsp/matrix_mixer_cell.h"

#include "dsp/mixer_section.h"
#include "widgets/level_taper.h"
#include "widgets/vm_dial.h"

#include <QPainter>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include <utility>

MatrixMixerCell::MatrixMixerCell(int source, int sink, QWidget *parent)
    : QWidget(parent)
    , m_source(source)
    , m_sink(sink)
    , m_dial(new VmDial(this))
{
    setAttribute(Qt::WA_StyledBackground); // else the cell shows the table's ground, which is another
    m_dial->setAttribute(Qt::WA_StyledBackground, false); // and would hide the cell's light
    resize(64, 64);
    setMinimumSize(64, 64);

    QFont font = m_dial->font();
    font.setPointSize(13);
    m_dial->setFont(font);
    m_dial->setObjectName(QStringLiteral("vmdial"));
    m_dial->setTextColor(Qt::white);
    m_dial->setBaseColor(QColor(200, 200, 200));
    m_dial->setGaugeSize(8);
    m_dial->setVal(mixerLowestLevel);

    auto *cellLayout = new QVBoxLayout(this);
    cellLayout->setContentsMargins(3, 3, 3, 3);
    cellLayout->addWidget(m_dial);
    setFocusProxy(m_dial);
    QMetaObject::connectSlotsByName(this);
}

void MatrixMixerCell::setDescription(const QString &text)
{
    m_description = text;
    describe();
}

void MatrixMixerCell::describe()
{
    const QString text = tr("%1, %2").arg(m_description, vm::levelText(m_dial->Val()));
    m_dial->setToolTip(text);
    m_dial->setAccessibleName(text);
}

void MatrixMixerCell::setLit(bool lit)
{
    if (std::exchange(m_lit, lit) != lit)
        update();
}

void MatrixMixerCell::paintEvent(QPaintEvent *)
{
    QColor ink = palette().color(QPalette::Active, QPalette::WindowText);
    QPainter painter(this);
    if (m_lit) {
        ink.setAlphaF(0.07);
        painter.fillRect(rect(), ink);
    }
}

void MatrixMixerCell::onChanged(const QPair<QPair<int, int>, QPair<int, QVariant>> &record)
{
    if (record.first.first != m_source || record.first.second != m_sink
        || record.second.first != CrosspointLevel)
        return;
    const QSignalBlocker silent(this);
    const QSignalBlocker dialSilent(m_dial);
    m_dial->setVal(record.second.second.toDouble());
    describe();
}

void MatrixMixerCell::onUiChanged(const QPair<QPair<int, int>, QPair<int, QVariant>> &record)
{
    onChanged(record);
    emit uiChanged(record);
}

void MatrixMixerCell::on_vmdial_parametersChanged()
{
    onUiChanged({{m_source, m_sink}, {CrosspointLevel, m_dial->Val()}});
}
