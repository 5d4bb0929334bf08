#include "dsp/matrix_mixer_form.h"

#include "dsp/header_cells.h"
#include "dsp/matrix_mixer_cell.h"
#include "dsp/overlay.h"
#include "dsp/port_colors.h"
#include "dsp/tone_gen_header_cell.h"
#include "ui_dsp_matrix_mixer.h"

#include <QJsonArray>
#include <QTimer>

namespace {

constexpr int headerHeight = 50;
constexpr int headerWidth = 153;
constexpr int cellSize = 64;

// The crosspoints that only one USB mode offers.
constexpr int btIn2Row = 8;
constexpr int btOutColumn = 7;

constexpr QRgb noColor = 0;

constexpr std::array<QRgb, mixerSources> sourceColors{
    noColor,    noColor,          noColor,          noColor,         color::usb,
    color::usb, color::bluetooth, color::bluetooth, color::voiceCue, color::toneGenerator};
constexpr std::array<QRgb, mixerSinks> sinkColors{noColor,    noColor,    noColor,         noColor,
                                                  color::usb, color::usb, color::bluetooth};

template <typename Colors>
void colorHeader(MixerHeaderCell *header, const Colors &colors, int index)
{
    const auto position = static_cast<size_t>(index);
    if (position < colors.size() && colors[position] != noColor)
        header->setColor(QColor::fromRgba(colors[position]));
}

MatrixMixerCell *cellAt(const QTableWidget *table, int row, int column)
{
    return qobject_cast<MatrixMixerCell *>(table->cellWidget(row, column));
}

} // namespace

MatrixMixerForm::MatrixMixerForm(const QStringList &sources, const QStringList &sinks,
                                 const QJsonObject *section, QWidget *parent)
    : BlockEditor(parent)
    , m_sources(sources)
    , m_sinks(sinks)
    , m_section(section)
    , m_ui(new Ui::DspMatrixMixer)
{
    m_ui->setupUi(this);
    m_ui->block_label->hide();
    for (auto &levelsOfSource : m_defaults)
        levelsOfSource.fill(mixerLowestLevel);
    buildGrid();
    // Larger there would be nothing to see, smaller not enough.
    setMinimumSize(headerWidth + 3 * cellSize, headerHeight + 3 * cellSize);
    setMaximumSize(m_sinks.size() * cellSize + headerWidth, m_sources.size() * cellSize + headerHeight);
    resize(maximumSize());
    MatrixMixerForm::onDataChanged();
    startAt(cellAt(m_ui->tableWidget, 1, 1));
    connect(m_ui->tableWidget, &CrosspointTable::userAt, this, &MatrixMixerForm::lightRowAndColumn);
}

MatrixMixerForm::~MatrixMixerForm()
{
    // What is left of a dialog hides itself at last, and the focus goes elsewhere.
    m_ui->tableWidget->disconnect(this);
}

void MatrixMixerForm::buildGrid()
{
    CrosspointTable *table = m_ui->tableWidget;
    table->setRowCount(m_sources.size() + 1);
    table->setColumnCount(m_sinks.size() + 1);
    table->setSelectionMode(QAbstractItemView::NoSelection);

    for (int row = 0; row < table->rowCount(); ++row) {
        table->setRowHeight(row, row == 0 ? headerHeight : cellSize);
        for (int column = 0; column < table->columnCount(); ++column) {
            table->setColumnWidth(column, column == 0 ? headerWidth : cellSize);
            QWidget *widget = newWidgetAt(row, column);
            widget->installEventFilter(
                new OverlayFactoryFilter(OverlayFactoryFilter::unavailableColor(), this));
            table->setCell(row, column, widget);
        }
    }
}

/// Lights the row and the column of a cell, as far as their headers; nothing for a row of -1.
void MatrixMixerForm::lightRowAndColumn(int row, int column)
{
    const QTableWidget *table = m_ui->tableWidget;
    for (int r = 0; r < table->rowCount(); ++r) {
        for (int c = 0; c < table->columnCount(); ++c) {
            const bool isLit = row > 0 && column > 0 && (r == row || c == column);
            if (auto *header = qobject_cast<MixerHeaderCell *>(table->cellWidget(r, c)))
                header->setLit(isLit);
            else if (MatrixMixerCell *cell = cellAt(table, r, c))
                cell->setLit(isLit);
        }
    }
}

QWidget *MatrixMixerForm::newWidgetAt(int row, int column)
{
    if (row == 0)
        return column == 0 ? newCorner() : newColumnHeader(column - 1);
    if (column > 0)
        return newCell(row - 1, column - 1);
    return row < m_sources.size() ? newRowHeader(row - 1) : newToneGenHeader();
}

QWidget *MatrixMixerForm::newCorner()
{
    auto *corner = new CornerHeaderCell;
    adoptBadge(corner->badge());
    connect(corner, &CornerHeaderCell::uiReset, this, &MatrixMixerForm::onUiReset);
    connect(corner, &CornerHeaderCell::uiDefault, this, &MatrixMixerForm::onUiDefault);
    return corner;
}

QWidget *MatrixMixerForm::newColumnHeader(int sink)
{
    auto *header = new HorizontalHeaderCell;
    const QString label = m_sinks.at(sink);
    header->setLabels(label.section(QLatin1Char('|'), 0, 0), label.section(QLatin1Char('|'), 1));
    colorHeader(header, sinkColors, sink);
    return header;
}

QWidget *MatrixMixerForm::newRowHeader(int source)
{
    auto *header = new VerticalHeaderCell;
    header->setLabel(m_sources.at(source));
    colorHeader(header, sourceColors, source);
    return header;
}

QWidget *MatrixMixerForm::newToneGenHeader()
{
    auto *header = new ToneGenHeaderCell;
    connect(header, &ToneGenHeaderCell::uiChanged, this, &MatrixMixerForm::onUiToneGenChanged);
    connect(this, &MatrixMixerForm::DevToneGenChanged, header, &ToneGenHeaderCell::onChanged);
    // Made before any owner's connection, so that the owner hears of the values before it lets go.
    connect(this, &BlockEditor::close, header, &ToneGenHeaderCell::reportPending);
    header->setColor(QColor::fromRgba(color::toneGenerator));
    return header;
}

QWidget *MatrixMixerForm::newCell(int source, int sink)
{
    auto *cell = new MatrixMixerCell(source, sink);
    const QString sinkName = QString(m_sinks.at(sink)).replace(QLatin1Char('|'), QLatin1Char(' '));
    cell->setDescription(tr("%1 to %2").arg(m_sources.at(source), sinkName));
    connect(cell, &MatrixMixerCell::uiChanged, this, &MatrixMixerForm::onUiChanged);
    connect(this, &MatrixMixerForm::DevChanged, cell, &MatrixMixerCell::onChanged);
    cell->onChanged({{source, sink}, {CrosspointLevel, mixerLowestLevel}});
    return cell;
}

void MatrixMixerForm::onDataChanged()
{
    const QJsonArray sinks = m_section->value(QLatin1String("value")).toArray();
    for (int sink = 0; sink < mixerSinks; ++sink) {
        const QJsonArray levels = sinks.at(sink).toArray();
        for (int source = 0; source < mixerSources; ++source)
            emit DevChanged({{source, sink}, {CrosspointLevel, levels.at(source).toInt()}});
    }
}

void MatrixMixerForm::onUiChanged(const QPair<QPair<int, int>, QPair<int, QVariant>> &record)
{
    emit uiMixChanged(record);
}

void MatrixMixerForm::onToneGenChanged(const QPair<int, QVariant> &record)
{
    emit DevToneGenChanged(record);
}

void MatrixMixerForm::onUiToneGenChanged(const QPair<int, QVariant> &record)
{
    emit uiTonGenChanged(record);
}

void MatrixMixerForm::onUiReset()
{
    Levels cleared;
    for (auto &levelsOfSource : cleared)
        levelsOfSource.fill(mixerLowestLevel);
    reportAll(cleared);
}

void MatrixMixerForm::onUiDefault()
{
    reportAll(m_defaults);
}

void MatrixMixerForm::reportAll(const Levels &levels)
{
    for (int source = 0; source < mixerSources; ++source) {
        for (int sink = 0; sink < mixerSinks; ++sink)
            onUiChanged({{source, sink}, {CrosspointLevel, levels[size_t(source)][size_t(sink)]}});
    }
    // The dials follow once the owner has written the section.
    QTimer::singleShot(m_reloadDelayMs, this, &MatrixMixerForm::onDataChanged);
}

void MatrixMixerForm::onUsbMode(int, int type)
{
    if (type == 0 || type == 1)
        setUnavailableByUsbMode(type == 0);
    disableUnavailableCells();
}

void MatrixMixerForm::setUnavailableByUsbMode(bool unavailable)
{
    const auto mark = [this, unavailable](int row, int column) {
        if (MatrixMixerCell *cell = cellAt(m_ui->tableWidget, row, column)) {
            const int others = cell->unavailableFlags() & ~MatrixMixerCell::unavailableByUsbMode;
            cell->setUnavailableFlags(
                quint8(others | (unavailable ? MatrixMixerCell::unavailableByUsbMode : 0)));
        }
    };
    for (int column = 1; column <= m_sinks.size(); ++column)
        mark(btIn2Row, column);
    for (int row = 1; row <= m_sources.size(); ++row)
        mark(row, btOutColumn);
}

void MatrixMixerForm::disableUnavailableCells()
{
    for (MatrixMixerCell *cell : findChildren<MatrixMixerCell *>())
        cell->setDisabled(cell->unavailableFlags() != 0);
}
