// Built against an installed zkit: proves that the umbrella header, the
// CMake package and the pkg-config file are usable from outside the tree.
#include <zkit.h>

#include <QApplication>
#include <cstring>

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    ZWidget widget;
    widget.setLayoutType(ZWidget::VBox);
    XMLNode node = XMLNode::parseString("<uitree><ZSpacer/></uitree>", "uitree");
    const bool ok = node.nChildNode() == 1 && std::strcmp(zkitBuildDate(), "2015-05-01") == 0
        && widget.layoutType() == ZWidget::VBox;
    return ok ? 0 : 1;
}
