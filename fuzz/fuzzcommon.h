#ifndef ZKIT_FUZZCOMMON_H
#define ZKIT_FUZZCOMMON_H

// Shared set-up of the targets that need a GUI: one application object for
// the whole run on the offscreen platform, and the registered names the
// inputs are mapped onto.

#include "zcreator.h"

#include <QApplication>
#include <QByteArray>
#include <QByteArrayList>
#include <QCoreApplication>
#include <QEvent>
#include <QMetaObject>
#include <QMetaProperty>

#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

namespace fuzz {

inline void startApplication(int *argc, char ***argv)
{
    static bool started = false;
    if (started)
        return;
    started = true;
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
    if (!getenv("QT_QPA_FONTDIR"))
        setenv("QT_QPA_FONTDIR", "/usr/share/fonts/truetype/dejavu", 1);
    // Lives for the whole run; libFuzzer exits without unwinding.
    static int appArgc = 1;
    static char name[] = "zkit-fuzz";
    static char *appArgv[] = {name, nullptr};
    (void)argc;
    (void)argv;
    // Warnings about malformed values are expected by the thousand; set
    // ZKIT_FUZZ_VERBOSE to see them.
    if (!getenv("ZKIT_FUZZ_VERBOSE"))
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    new QApplication(appArgc, appArgv);
}

// Runs what the input queued: timers due now, posted events, deferred deletes.
inline void drainEvents()
{
    for (int i = 0; i < 3; ++i) {
        QCoreApplication::processEvents(QEventLoop::AllEvents);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

struct ClassInfo
{
    QByteArray name;
    ZCreatorBase::Kind kind;
    const QMetaObject *meta;
    std::vector<QMetaProperty> properties; // writable ones, base classes included
};

inline const std::vector<ClassInfo> &registeredClasses()
{
    static const std::vector<ClassInfo> classes = [] {
        std::vector<ClassInfo> all;
        for (ZCreatorBase::Kind kind : {ZCreatorBase::WidgetKind, ZCreatorBase::WindowKind, ZCreatorBase::HelperKind}) {
            for (const QByteArray &name : ZCreatorBase::classNames(kind)) {
                const ZCreatorBase *creator = ZCreatorBase::find(kind, name);
                if (!creator)
                    continue;
                ClassInfo info{name, kind, creator->classMetaObject(), {}};
                for (int i = 0; i < info.meta->propertyCount(); ++i) {
                    const QMetaProperty p = info.meta->property(i);
                    if (p.isWritable())
                        info.properties.push_back(p);
                }
                all.push_back(info);
            }
        }
        return all;
    }();
    return classes;
}

// Reads bytes off the front of the input.
class Input
{
public:
    Input(const uint8_t *data, size_t size) : m_data(data), m_size(size) {}
    bool atEnd() const { return m_pos >= m_size; }
    uint8_t byte() { return atEnd() ? 0 : m_data[m_pos++]; }
    // A number in [0, n); 0 for n == 0.
    size_t pick(size_t n)
    {
        if (n == 0)
            return 0;
        size_t v = byte();
        if (n > 256)
            v = (v << 8) | byte();
        return v % n;
    }
    // Up to max bytes, ended early by a 0 byte (which is consumed).
    QByteArray bytes(size_t max)
    {
        QByteArray out;
        while (!atEnd() && size_t(out.size()) < max) {
            const uint8_t c = byte();
            if (c == 0)
                break;
            out.append(char(c));
        }
        return out;
    }
    QByteArray rest()
    {
        QByteArray out(reinterpret_cast<const char *>(m_data + m_pos), int(m_size - m_pos));
        m_pos = m_size;
        return out;
    }

private:
    const uint8_t *m_data;
    size_t m_size;
    size_t m_pos = 0;
};

} // namespace fuzz

#endif // ZKIT_FUZZCOMMON_H
