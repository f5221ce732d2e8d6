#include "zspacer.h"
#include "zcreator.h"

ZSpacer::ZSpacer(QGraphicsItem *parent)
    : ZWidget(parent)
{
}

ZSpacer::~ZSpacer() = default;

Z_REGISTER_WIDGET(ZSpacer);
