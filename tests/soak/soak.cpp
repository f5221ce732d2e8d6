// Soak: creates, shows and destroys many windows from a document while
// cycling theme colours and skins, and runs the object-lifetime hazards of
// the toolkit each round: drop lists opened and closed, message boxes ended
// by timers, follow windows whose target dies while shown, list widgets
// whose model dies, buttons deleted from their own clicked().
//
// Built only with the sanitizers; LeakSanitizer checks the exit. Prints the
// live heap at window 100 and at the last one and fails when it grew by
// more than the allowance, or when a pixmap cache went beyond its cap.
//
// usage: zkit-soak <document> [windows = 1000] [allowed growth in KiB = 1024]

#include "zabstractlistmodel.h"
#include "zcommonlistmodel.h"
#include "zcomboboxwidget.h"
#include "zfollowwindow.h"
#include "zlistwidget.h"
#include "zmessagebox.h"
#include "zpushbutton.h"
#include "zresource.h"
#include "ztheme.h"
#include "zwidget.h"
#include "zwindow.h"
#include "zxmlui.h"

#include <QApplication>
#include <QFile>
#include <QGraphicsScene>
#include <QGraphicsSceneMouseEvent>
#include <QPointer>
#include <QTimer>


#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <cstdlib>

// Both sanitizer runtimes (gcc's and clang's) export these; gcc ships no
// header for the first one.
extern "C" size_t __sanitizer_get_current_allocated_bytes();
extern "C" void __sanitizer_print_memory_profile(size_t top_percent, size_t max_contexts);

namespace {

constexpr int PixmapCacheCap = 100;

void settle()
{
    for (int i = 0; i < 3; ++i) {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

long residentKiB()
{
    long pages = 0, resident = 0;
    if (FILE *f = std::fopen("/proc/self/statm", "r")) {
        if (std::fscanf(f, "%ld %ld", &pages, &resident) != 2)
            resident = 0;
        std::fclose(f);
    }
    return resident * 4;
}

long liveHeapKiB() { return long(__sanitizer_get_current_allocated_bytes() / 1024); }

void sendMouse(QGraphicsScene *scene, QEvent::Type type, const QPointF &pos, Qt::MouseButtons buttons)
{
    QGraphicsSceneMouseEvent event(type);
    event.setScenePos(pos);
    event.setScreenPos(pos.toPoint());
    event.setButton(type == QEvent::GraphicsSceneMouseMove ? Qt::NoButton : Qt::LeftButton);
    event.setButtons(buttons);
    event.setButtonDownScenePos(Qt::LeftButton, pos);
    event.setAccepted(false);
    QCoreApplication::sendEvent(scene, &event);
}

const char *const kSkins[] = {
    "<uiskin><ZWidget name='soak' backgroundColor='#f0e0d0' margins='2,2,2,2'/>"
    "<ZPushButton name='soak' text='A' fixSize='60,24'/></uiskin>",
    "<uiskin><ZWidget name='soak' backgroundColor='#203040'/>"
    "<ZPushButton name='soak' text='B' fixSize='80,20'/></uiskin>",
};

// ZKIT_SOAK_SKIP="theme,skin,combo,list,follow,button,msgbox" leaves parts
// out, to find which one a growth comes from.
bool enabled(const char *part)
{
    static const QByteArrayList skipped = qgetenv("ZKIT_SOAK_SKIP").split(',');
    return !skipped.contains(part);
}

// One window of the document, with every hazard run inside it.
void round(const QByteArray &document, int i)
{
    if (enabled("theme"))
        ZTheme::setThemeColor(QColor::fromHsv((i * 37) % 360, 120 + i % 100, 200));
    if (i % 10 == 0 && enabled("skin"))
        ZXmlUI::initSkin(QByteArray(kSkins[(i / 10) % 2]));

    QPointer<ZWindow> window = ZXmlUI::windowFromMemory(document);
    if (!window) {
        std::fprintf(stderr, "soak: the document does not load\n");
        std::exit(2);
    }
    window->resize(640 + i % 50, 480);
    window->show();
    settle();
    ZWidget *root = window->rootWidget();
    root->setProperty("skinName", QStringLiteral("soak"));

    // Drop lists: every combo box of the document, plus one of our own.
    if (enabled("combo")) {
        auto *combo = new ZComboBoxWidget;
        root->addItem(combo);
        for (int r = 0; r < 20; ++r)
            combo->addItem(QStringLiteral("row %1").arg(r));
        for (ZComboBoxWidget *c : window->findChildren<ZComboBoxWidget *>()) {
            QMetaObject::invokeMethod(c, "showDropList");
            settle();
            QMetaObject::invokeMethod(c, "hideDropList");
        }
    }

    // A list widget whose model goes first.
    if (enabled("list")) {
        auto *list = new ZListWidget;
        root->addItem(list);
        list->resize(200, 150);
        auto *model = new ZCommonListModel;
        for (int r = 0; r < 50; ++r)
            model->addItem(QStringLiteral("item %1").arg(r));
        list->setModel(model);
        settle();
        delete model;
        settle();
        (void)window->grab();
    }

    // A follow window whose target dies while it is shown.
    if (enabled("follow")) {
        auto *target = new ZWidget;
        target->setObjectName(QStringLiteral("followTarget"));
        root->addItem(target);
        settle();
        QPointer<ZFollowWindow> follow = new ZFollowWindow(window);
        follow->setTarget(target);
        follow->setWindowSize(120, 60);
        follow->show();
        settle();
        delete target;
        settle();
        if (follow && i % 2)
            delete follow.data();
    }

    // A button deleted from its own clicked(), alone in a scene so that
    // nothing of the document lies over it.
    if (enabled("button")) {
        QGraphicsScene scene;
        auto *button = new ZPushButton;
        button->setText(QStringLiteral("delete me"));
        scene.addItem(button);
        button->setGeometry(QRectF(10, 10, 80, 24));
        QPointer<ZPushButton> buttonGuard = button;
        QObject::connect(button, &ZPushButton::clicked, button, [button] { delete button; });
        const QPointF at = button->mapToScene(button->rect().center());
        sendMouse(&scene, QEvent::GraphicsSceneMouseMove, at, Qt::NoButton);
        sendMouse(&scene, QEvent::GraphicsSceneMousePress, at, Qt::LeftButton);
        sendMouse(&scene, QEvent::GraphicsSceneMouseRelease, at, Qt::NoButton);
        settle();
        if (buttonGuard) {
            std::fprintf(stderr, "soak: the button was not clicked at round %d\n", i);
            std::exit(2);
        }
    }

    // A message box ended by a timer from inside its modal run.
    if (i % 5 == 0 && enabled("msgbox")) {
        if (ZMessageBox *box = ZMessageBox::create(root, ZMessageBox::Question, QStringLiteral("Soak"),
                                                   QStringLiteral("Round %1").arg(i), QStringLiteral("OK"),
                                                   QStringLiteral("Cancel"))) {
            QPointer<ZMessageBox> guard = box;
            QTimer::singleShot(5, box, [box] { box->done(1); });
            box->doModal(root, false, true);
            settle();
            delete guard.data();
        }
    }

    window->close();
    delete window.data();
    settle();
}

} // namespace

int main(int argc, char **argv)
{
    if (argc < 2) {
        std::fprintf(stderr, "usage: %s <document> [windows] [allowed growth KiB]\n", argv[0]);
        return 2;
    }
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    // The offscreen platform says so on every pop-up it cannot raise.
    qInstallMessageHandler([](QtMsgType type, const QMessageLogContext &, const QString &message) {
        if (!message.contains(QLatin1String("does not support")))
            std::fprintf(stderr, "%s%s\n", type >= QtCriticalMsg ? "critical: " : "", qPrintable(message));
    });
    QApplication app(argc, argv);
    QFile file(QString::fromLocal8Bit(argv[1]));
    if (!file.open(QIODevice::ReadOnly)) {
        std::fprintf(stderr, "soak: cannot read %s\n", argv[1]);
        return 2;
    }
    const QByteArray document = file.readAll();
    const int windows = argc > 2 ? std::atoi(argv[2]) : 1000;
    const long allowance = argc > 3 ? std::atol(argv[3]) : 1024;

    // The heap figure must see what the program allocates, or "flat" means nothing.
    {
        const long before = liveHeapKiB();
        auto *block = new char[4 << 20];
        std::fill_n(block, 4 << 20, 'x');
        const long during = liveHeapKiB();
        delete[] block;
        if (during - before < 4096) {
            std::fprintf(stderr, "soak: the allocator does not report the live heap (%ld -> %ld KiB)\n", before,
                         during);
            return 2;
        }
    }

    long heapAt100 = 0, rssAt100 = 0;
    int worstCache = 0;
    for (int i = 1; i <= windows; ++i) {
        round(document, i);
        worstCache = qMax(worstCache, qMax(ZResource::cacheCount(false), ZResource::cacheCount(true)));
        if (worstCache > PixmapCacheCap) {
            std::fprintf(stderr, "soak: a pixmap cache holds %d pixmaps at window %d\n", worstCache, i);
            return 1;
        }
        if (i == 100) {
            heapAt100 = liveHeapKiB();
            rssAt100 = residentKiB();
        }
        if (i % 100 == 0 || (windows < 100 && i % 10 == 0))
            std::printf("window %d: live heap %ld KiB, resident %ld KiB\n", i, liveHeapKiB(), residentKiB());
        std::fflush(stdout);
    }
    ZTheme::resetTheme();
    settle();
    const long heapEnd = liveHeapKiB();
    // ZKIT_SOAK_PROFILE lists the allocation sites of the live heap.
    if (qEnvironmentVariableIsSet("ZKIT_SOAK_PROFILE"))
        __sanitizer_print_memory_profile(100, 25);
    std::printf("soak: %d windows; live heap %ld KiB at window 100, %ld KiB at window %d; resident %ld / %ld KiB;"
                " largest pixmap cache %d (cap %d)\n",
                windows, heapAt100, heapEnd, windows, rssAt100, residentKiB(), worstCache, PixmapCacheCap);
    if (windows >= 100 && heapEnd - heapAt100 > allowance) {
        std::printf("soak: FAILED, the live heap grew by %ld KiB (allowed %ld)\n", heapEnd - heapAt100, allowance);
        return 1;
    }
    return 0;
}
