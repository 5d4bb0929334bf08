#include "widgets/level_control.h"

LevelControl::LevelControl(QWidget *parent)
    : QWidget(parent)
{
    setFocusPolicy(Qt::StrongFocus);
}

void LevelControl::showLevel(double level)
{
    m_level = level;
    update();
}
