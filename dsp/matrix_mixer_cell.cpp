#include "dsp/matrix_mixer_cell.h"

#include "dsp/mixer_section.h"
#include "widgets/vm_dial.h"

#include <QSignalBlocker>
#include <QVBoxLayout>

MatrixMixerCell::MatrixMixerCell(int source, int sink, QWidget *parent)
    : QWidget(parent)
    , m_source(source)
    , m_sink(sink)
    , m_dial(new VmDial(this))
{
    setAttribute(Qt::WA_StyledBackground); // else the dial's ground shows as a square on the table's
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
    m_dial->setToolTip(text);
    m_dial->setAccessibleName(text);
}

void MatrixMixerCell::onChanged(const QPair<QPair<int, int>, QPair<int, QVariant>> &record)
{
    if (record.first.first != m_source || record.first.second != m_sink
        || record.second.first != CrosspointLevel)
        return;
    const QSignalBlocker silent(this);
    const QSignalBlocker dialSilent(m_dial);
    m_dial->setVal(record.second.second.toDouble());
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
