#pragma once

#include "protocol/sections.h"

#include <QLatin1String>
#include <QPoint>

#include <array>

class BlockEditor;
struct StripVariant;

/// The blocks of the diagram that have an editor, in the order in which a closing window closes the editors.
enum class Block { BtIn, NetRx, UsbIn, Mixer, BtOut, NetTx, UsbOut };

constexpr int BlockCount = int(Block::UsbOut) + 1;

/// What there is to know of one block.
struct BlockInfo
{
    Section section; ///< what the editor shows
    QLatin1String title; ///< of the editor's window
    const StripVariant *strips; ///< null for the mixer
    /// Makes the editor without a parent. It reads the section for as long as it lives.
    BlockEditor *(*create)(const QJsonObject *section);

    QPoint place; ///< column and row in the diagram
    const char *area; ///< the block's rectangle, a property of the diagram's scene
    const char *click; ///< slot of the scene's backend
};

/// Every block, in the order of the enum.
const std::array<BlockInfo, BlockCount> &blocks();

const BlockInfo &blockInfo(Block block);
