#include "dsp/strip_editor.h"

#include "dsp/channel_strip.h"
#include "dsp/device_badge.h"
#include "dsp/level_datagram.h"
#include "dsp/overlay.h"
#include "ui_dsp_strip_editor.h"

#include <QJsonArray>

namespace {

constexpr int Margin = 3; // px, which with that of the strips is the distance of two strips

} // namespace

StripEditor::StripEditor(const StripVariant &variant, StripFactory makeStrip, uchar channels,
                         const QJsonObject *section, QWidget *parent)
    : BlockEditor(parent)
    , m_variant(variant)
    , m_section(section)
    , m_ui(new Ui::DspStripEditor)
{
    m_ui->setupUi(this);
    m_ui->block_label->hide();
    setContentsMargins(Margin, Margin, Margin, Margin);
    auto *badge = new DeviceBadge(variant.color);
    m_ui->editor_layout->insertWidget(0, badge);
    m_ui->editor_layout->setAlignment(m_ui->widget, Qt::AlignHCenter | Qt::AlignTop);
    adoptBadge(badge);
    for (int channel = 0; channel < channels; ++channel)
        addStrip(makeStrip(this));
    resize(variant.initialSize);
    setMaximumSize(variant.initialSize.expandedTo(minimumSizeHint())); // the strips do not grow
    startAt(m_strips.first());
    StripEditor::onDataChanged();
}

StripEditor::~StripEditor() = default;

void StripEditor::addStrip(ChannelStrip *strip)
{
    m_strips.append(strip);
    strip->setColor(m_variant.color);
    strip->setLabel(QString(m_variant.stripLabel).arg(m_strips.size()));
    m_ui->widget->layout()->addWidget(strip);
    connect(strip, &ChannelStrip::uiChanged, this, &StripEditor::onUiChanged);
    if (m_variant.overlay)
        strip->installEventFilter(new OverlayFactoryFilter(OverlayFactoryFilter::unavailableColor(), this));
}

void StripEditor::addBelowStrips(QWidget *widget)
{
    layout()->addWidget(widget);
}

void StripEditor::onSetStripLabel(uchar channel, const QString &text)
{
    if (ChannelStrip *named = strip(channel))
        named->setLabel(text);
}

void StripEditor::onEnableStrip(uchar channel, bool enabled)
{
    if (ChannelStrip *named = strip(channel))
        named->setEnabled(enabled);
}

void StripEditor::onDataChanged()
{
    const QJsonArray channels = m_section->value(QLatin1String("value")).toArray();
    const int count = qMin(channels.size(), m_strips.size());
    for (int channel = 0; channel < count; ++channel) {
        if (m_strips.at(channel)->isEnabled())
            showRecords(channel, recordsOfChannel(m_variant.kind, channels.at(channel).toObject()));
    }
}

void StripEditor::showRecords(int channel, const QVector<StripRecord> &records)
{
    for (const StripRecord &record : records)
        onChanged({channel, record});
}

void StripEditor::onChanged(const QPair<int, QPair<int, QVariant>> &record)
{
    if (ChannelStrip *named = strip(record.first))
        named->onChanged(record.second);
}

void StripEditor::onUiChanged(const QPair<int, QVariant> &record)
{
    const int channel = m_strips.indexOf(qobject_cast<ChannelStrip *>(sender()));
    if (channel >= 0)
        emit uiChanged({channel, record});
}

void StripEditor::onLevels(const QByteArray &bytes)
{
    for (int channel = 0; channel < m_strips.size(); ++channel) {
        if (const auto level = stripLevel(bytes, m_variant.firstLevelByte, channel))
            m_strips.at(channel)->onLevelChange(*level);
    }
}

void StripEditor::setChannelAvailability(int ch, int type)
{
    const auto channel = static_cast<uchar>(ch);
    if (type == 0) {
        onEnableStrip(channel, false);
        showRecords(channel, recordsOfUnavailableChannel(m_variant.kind));
    } else if (type == 1) {
        onEnableStrip(channel, true);
        onDataChanged();
    }
}
