// Building a window from its description: a generated uitree document of N
// controls in rows of ten, loaded with ZXmlUI::windowFromMemory, laid out and
// rendered once into an image, against QUiLoader building the equivalent
// Designer form (QHBoxLayouts inside a QVBoxLayout) and rendering it once.
// Both documents are generated once; each run builds, renders and deletes.

#include "benchutil.h"
#include "zcreator.h"
#include "zwidget.h"
#include "zwindow.h"
#include "zxmlui.h"

#include <QApplication>
#include <QBuffer>
#include <QGraphicsItem>
#include <QImage>
#include <QLayout>
#include <QResizeEvent>
#include <QUiLoader>
#include <QWidget>

#include <cstdio>
#include <cstdlib>
#include <functional>

namespace {

constexpr int PerRow = 10;
constexpr int RowHeight = 26;
constexpr int Width = 1100;

// The six kinds of control, in turn; each with the few attributes an
// application typically sets.
const char *const zkitControls[] = {
    R"(<ZPushButton text="Button %1" fixWidth="96" fixHeight="24"/>)",
    R"(<ZLabel text="Label %1" fixWidth="96"/>)",
    R"(<ZCheckButton text="Option %1" check="true"/>)",
    R"(<ZLineEdit text="Edit %1" fixWidth="96" fixHeight="22"/>)",
    R"(<ZFrameItem frameType="GridFour" imagePath=":/image/theme/rectframe_normal.png" fixSize="40,22"/>)",
    R"(<ZImageItem imagePath=":/image/theme/titleicon.png" fixSize="16,16"/>)",
};

const char *const uiControls[] = {
    R"(<widget class="QPushButton" name="b%1"><property name="text"><string>Button %1</string></property>)"
    R"(<property name="minimumSize"><size><width>96</width><height>24</height></size></property>)"
    R"(<property name="maximumSize"><size><width>96</width><height>24</height></size></property></widget>)",
    R"(<widget class="QLabel" name="l%1"><property name="text"><string>Label %1</string></property>)"
    R"(<property name="maximumSize"><size><width>96</width><height>16777215</height></size></property></widget>)",
    R"(<widget class="QCheckBox" name="c%1"><property name="text"><string>Option %1</string></property>)"
    R"(<property name="checked"><bool>true</bool></property></widget>)",
    R"(<widget class="QLineEdit" name="e%1"><property name="text"><string>Edit %1</string></property>)"
    R"(<property name="maximumSize"><size><width>96</width><height>22</height></size></property></widget>)",
    R"(<widget class="QFrame" name="f%1"><property name="frameShape"><enum>QFrame::StyledPanel</enum></property>)"
    R"(<property name="minimumSize"><size><width>40</width><height>22</height></size></property>)"
    R"(<property name="maximumSize"><size><width>40</width><height>22</height></size></property></widget>)",
    R"(<widget class="QLabel" name="i%1"><property name="pixmap"><pixmap>:/image/theme/titleicon.png</pixmap></property>)"
    R"(<property name="maximumSize"><size><width>16</width><height>16</height></size></property></widget>)",
};

QByteArray zkitDocument(int controls)
{
    QByteArray text = "<uitree><ZWindow><ZWidget layout=\"VBox\" spacing=\"2\">\n";
    for (int i = 0; i < controls; ++i) {
        if (i % PerRow == 0)
            text += "<ZWidget layout=\"HBox\" spacing=\"4\" fixHeight=\"24\">";
        text += QByteArray(zkitControls[i % 6]).replace("%1", QByteArray::number(i));
        if (i % PerRow == PerRow - 1 || i == controls - 1)
            text += "</ZWidget>\n";
    }
    return text + "</ZWidget></ZWindow></uitree>\n";
}

QByteArray uiDocument(int controls)
{
    QByteArray text = R"(<?xml version="1.0" encoding="UTF-8"?><ui version="4.0"><class>Form</class>)"
                      R"(<widget class="QWidget" name="Form"><layout class="QVBoxLayout" name="v">)"
                      R"(<property name="spacing"><number>2</number></property>)";
    for (int i = 0; i < controls; ++i) {
        if (i % PerRow == 0)
            text += "<item><layout class=\"QHBoxLayout\" name=\"h" + QByteArray::number(i)
                + "\"><property name=\"spacing\"><number>4</number></property>";
        text += "<item>" + QByteArray(uiControls[i % 6]).replace("%1", QByteArray::number(i)) + "</item>";
        if (i % PerRow == PerRow - 1 || i == controls - 1)
            text += "</layout></item>\n";
    }
    return text + "</layout></widget><resources/><connections/></ui>\n";
}

QSize windowSize(int controls)
{
    return QSize(Width, (controls + PerRow - 1) / PerRow * RowHeight);
}

// A hidden widget keeps its resizes pending until it is shown or drawn. The
// window is sized as showing it would be, before the event loop runs its
// layout requests: the window itself, then its own layout, then every widget
// below it that has a resize pending, parents before children.
void sendPendingResize(QWidget *widget)
{
    if (!widget->testAttribute(Qt::WA_PendingResizeEvent))
        return;
    widget->setAttribute(Qt::WA_PendingResizeEvent, false);
    QResizeEvent event(widget->size(), QSize());
    QCoreApplication::sendEvent(widget, &event);
}

void resizeHidden(QWidget *widget, const QSize &size)
{
    widget->resize(size);
    sendPendingResize(widget);
    if (QLayout *layout = widget->layout())
        layout->activate();
    for (QWidget *child : widget->findChildren<QWidget *>())
        sendPendingResize(child);
}

// Each build checks its own result, so that a build that quietly made less
// than was asked for cannot look fast.
bool buildZkit(const QByteArray &document, int controls)
{
    ZWindow *window = ZXmlUI::windowFromMemory(document);
    if (!window)
        return false;
    resizeHidden(window, windowSize(controls));
    // Laid out as the event loop would: pending layout requests first.
    QCoreApplication::sendPostedEvents();
    window->rootWidget()->activateLayout();
    QImage image(window->size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    // As the peer is drawn: the widget with its children, at one to one
    // (QGraphicsView::render would scale its viewport into the image).
    window->QWidget::render(&image);
    // What the event loop would have delivered before the window closes.
    QCoreApplication::sendPostedEvents();
    const QList<QGraphicsItem *> top = window->rootWidget()->childItems();
    const bool ok = top.size() == 1 && top.first()->childItems().size() == (controls + PerRow - 1) / PerRow;
    delete window;
    return ok;
}

bool buildUiLoader(QUiLoader &loader, const QByteArray &document, int controls)
{
    QBuffer buffer;
    buffer.setData(document);
    buffer.open(QIODevice::ReadOnly);
    QWidget *form = loader.load(&buffer);
    if (!form)
        return false;
    resizeHidden(form, windowSize(controls));
    QCoreApplication::sendPostedEvents();
    form->layout()->activate();
    QImage image(form->size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    form->render(&image);
    QCoreApplication::sendPostedEvents();
    const bool ok = form->layout()->count() == (controls + PerRow - 1) / PerRow;
    delete form;
    return ok;
}

// Kept out of line, so that a profiler can collect this call alone.
Q_NEVER_INLINE bool profiledBuild(const std::function<bool()> &build)
{
    return build();
}

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);

    for (const char *name : {"ZPushButton", "ZLabel", "ZCheckButton", "ZLineEdit", "ZFrameItem", "ZImageItem"}) {
        if (!ZWidgetCreatorBase::find(name)) {
            std::fprintf(stderr, "window-build: %s is not registered\n", name);
            return 1;
        }
    }

    // "zkit-bench-windowbuild N [quiloader]" builds the window of N controls
    // once to warm up (fonts, images and plug-ins load on first use), then
    // once more inside profiledBuild, and stops: the form to run under a
    // profiler, e.g. callgrind --toggle-collect='*profiledBuild*' (whose call
    // counts still include the warm-up).
    QUiLoader loader;
    if (argc > 1) {
        const int controls = qBound(1, atoi(argv[1]), 1000000);
        const bool peer = argc > 2 && qstrcmp(argv[2], "quiloader") == 0;
        const QByteArray document = peer ? uiDocument(controls) : zkitDocument(controls);
        const auto build = [&] { return peer ? buildUiLoader(loader, document, controls) : buildZkit(document, controls); };
        const bool ok = build() && profiledBuild(build);
        return ok ? 0 : 1;
    }

    for (int controls : {1000, 5000}) {
        const QByteArray zkit = zkitDocument(controls);
        const QByteArray ui = uiDocument(controls);
        const int runs = controls <= 1000 ? 11 : 7;
        bool ok = true;
        // One warm-up each: first use loads fonts, images and plug-ins.
        ok &= buildZkit(zkit, controls) && buildUiLoader(loader, ui, controls);
        const auto [zkitSeconds, uiSeconds] = medianSecondsInterleaved(
            runs, [&] { ok &= buildZkit(zkit, controls); }, [&] { ok &= buildUiLoader(loader, ui, controls); });
        const double zkitMs = 1000 * zkitSeconds;
        const double uiMs = 1000 * uiSeconds;
        if (!ok) {
            std::fprintf(stderr, "window-build: a build made less than asked for\n");
            return 1;
        }
        std::printf("window-build zkit %d: %.1f ms\n", controls, zkitMs);
        std::printf("window-build quiloader %d: %.1f ms\n", controls, uiMs);
        std::printf("window-build ratio zkit/quiloader %d: %.2f\n", controls, zkitMs / uiMs);
        std::fflush(stdout);
    }
    return 0;
}
