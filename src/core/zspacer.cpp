#include "zspacer.h"

ZSpacer::ZSpacer(QGraphicsItem *parent)
    : ZWidget(parent)
{
}

ZSpacer::~ZSpacer() = default;
