#pragma once

#include "devhost/tour/guide.h"

#include <QPoint>
#include <QString>
#include <QVector>

namespace devhost::tour {

/// A level at or below this is silence, in dB.
constexpr double SilentDb = -100.0;

/// A block of the diagram: its editor's title, and where its middle is as a share of the view.
struct Block
{
    QString title;
    QString picture;
    double x;
    double y;
};

/// From top left to bottom right: inputs, mixer, outputs.
QVector<Block> blocks();
Block netRx();
Block netTx();
Block mixer();

QPoint placeInScene(const Guide &guide, const Block &block);
/// Clicks the block and waits for its editor.
Step openBlock(Guide &guide, const Block &block);
/// The same without a picture.
Step openAgain(Guide &guide, const Block &block);

/// Part number @p channel of that name and type in the block's editor, counted from 0; null when missing.
template <typename T>
T *partOf(const Guide &guide, const Block &block, const QString &objectName, int channel)
{
    const QWidget *editor = guide.windowTitled(block.title);
    return editor ? editor->findChildren<T *>(objectName).value(channel) : nullptr;
}

QWidget *faderOf(const Guide &guide, const Block &block, int channel);
/// What the fader's meter shows, in dB; not a number when there is none.
double meterOf(const QWidget *fader);
/// The mixer's dial that feeds sink @p sink from source @p source, both counted from 0; null when missing.
QWidget *dialOf(const Guide &guide, int source, int sink);

} // namespace devhost::tour
