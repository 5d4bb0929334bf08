#include "devhost/look_menu.h"

#include "devhost/window_memory.h"

#include <algorithm>
#include <iterator>

namespace devhost {

namespace {

constexpr int sizes[] = {90, 100, 115, 130, 150}; // percent of the system's text size

const QLatin1String StyleKey("look/style");
const QLatin1String SizeKey("look/text-percent");
const QLatin1String LightWord("light");

/// Of a size that a file names, the nearest that the menu offers.
int nearestSize(int percent)
{
    return *std::min_element(std::begin(sizes), std::end(sizes), [percent](int a, int b) {
        return qAbs(qint64(a) - percent) < qAbs(qint64(b) - percent);
    });
}

} // namespace

Look rememberedLook(const WindowMemory &memory)
{
    return {memory.text(StyleKey) == LightWord,
            nearestSize(memory.text(SizeKey, QStringLiteral("100")).toInt())};
}

LookMenu::LookMenu(WindowMemory *memory, QWidget *parent)
    : QMenu(tr("&View"), parent)
    , m_memory(memory)
    , m_look(wornLook())
{
    addStyle(tr("&Dark"), false);
    addStyle(tr("&Light"), true);
    addSeparator();
    fillSizes(addMenu(tr("&Text Size")));
    addStep(tr("L&arger Text"), QKeySequence(tr("Ctrl++")), 1);
    addStep(tr("&Smaller Text"), QKeySequence(tr("Ctrl+-")), -1);
    showWorn();
}

void LookMenu::addStyle(const QString &text, bool light)
{
    QAction *action = addAction(text, this, [this, light] { wear({light, m_look.textPercent}); });
    action->setCheckable(true);
    action->setData(light);
}

void LookMenu::fillSizes(QMenu *menu)
{
    for (int size : sizes) {
        QAction *action = menu->addAction(tr("%1 %").arg(size), this, [this, size] {
            wear({m_look.light, size});
        });
        action->setCheckable(true);
        action->setData(size);
    }
}

void LookMenu::addStep(const QString &text, const QKeySequence &keys, int step)
{
    addAction(
        text, this,
        [this, step] {
            const int *at = std::find(std::begin(sizes), std::end(sizes), m_look.textPercent) + step;
            if (at >= std::begin(sizes) && at < std::end(sizes))
                wear({m_look.light, *at});
        },
        keys);
}

void LookMenu::wear(const Look &look)
{
    m_look = look;
    wearLook(look);
    m_memory->keep(StyleKey, look.light ? QString(LightWord) : QStringLiteral("dark"));
    m_memory->keep(SizeKey, look.textPercent);
    showWorn();
}

void LookMenu::showWorn()
{
    for (QAction *action : findChildren<QAction *>()) {
        if (action->data().type() == QVariant::Bool)
            action->setChecked(action->data().toBool() == m_look.light);
        else if (action->data().isValid())
            action->setChecked(action->data().toInt() == m_look.textPercent);
    }
}

} // namespace devhost
