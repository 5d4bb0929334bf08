#pragma once

#include "devhost/look.h"

#include <QMenu>

namespace devhost {

class WindowMemory;

/// What the user chose last.
Look rememberedLook(const WindowMemory &memory);

/// The menu that chooses style and text size.
class LookMenu : public QMenu
{
    Q_OBJECT

public:
    /// @p memory is not owned. What is worn already is the choice to begin with.
    explicit LookMenu(WindowMemory *memory, QWidget *parent = nullptr);

private:
    void addStyle(const QString &text, bool light);
    void fillSizes(QMenu *menu);
    void addStep(const QString &text, const QKeySequence &keys, int step);
    void wear(const Look &look);
    void showWorn();

    WindowMemory *m_memory;
    Look m_look;
};

} // namespace devhost
