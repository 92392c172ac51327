// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Tells ThreadSanitizer how the locks and the posted events of GLib and Qt order memory accesses.

#include <QtCore/qcoreapplication.h>
#include <QtCore/qmutex.h>
#include <QtMultimedia/qvideoframe.h>

#include <dlfcn.h>
#include <glib.h>
#include <sanitizer/tsan_interface.h>

// GLib and Qt make their locks from futexes, inside libraries that aren't instrumented. Their
// functions are replaced by these, which call them.

namespace {

char postedEvents;
char sharedFrames;

template<typename Function> Function *original(const char *name)
{
    return reinterpret_cast<Function *>(dlsym(RTLD_NEXT, name));
}

class EventFilter : public QObject
{
public:
    using QObject::QObject;

    bool eventFilter(QObject *, QEvent *) override
    {
        __tsan_acquire(&postedEvents);
        return false;
    }
};

void installEventFilter()
{
    qApp->installEventFilter(new EventFilter(qApp));
}

} // namespace

Q_COREAPP_STARTUP_FUNCTION(installEventFilter)

bool QMetaObject::invokeMethodImpl(QObject *object, QtPrivate::QSlotObjectBase *slot,
                                   Qt::ConnectionType type, void *result)
{
    static const auto invoke = original<decltype(QMetaObject::invokeMethodImpl)>(
            "_ZN11QMetaObject16invokeMethodImplEP7QObjectPN9QtPrivate15QSlotObjectBaseE"
            "N2Qt14ConnectionTypeEPv");
    __tsan_release(&postedEvents);
    return invoke(object, slot, type, result);
}

void QMetaObject::activate(QObject *sender, const QMetaObject *metaObject, int signal,
                           void **arguments)
{
    using Activate = void(QObject *, const QMetaObject *, int, void **);
    static const auto emitSignal
            = original<Activate>("_ZN11QMetaObject8activateEP7QObjectPKS_iPPv");
    __tsan_release(&postedEvents);
    emitSignal(sender, metaObject, signal, arguments);
}

void QMutex::lock()
{
    static const auto take = original<void(QMutex *)>("_ZN6QMutex4lockEv");
    take(this);
    __tsan_acquire(this);
}

void QMutex::unlock() noexcept
{
    static const auto giveBack = original<void(QMutex *)>("_ZN6QMutex6unlockEv");
    __tsan_release(this);
    giveBack(this);
}

// The count of references by which Qt's library finds out that this is the last copy of a frame.
extern "C" void destroyFrame(QVideoFrame *frame) asm("_ZN11QVideoFrameD1Ev");
extern "C" Q_DECL_EXPORT void destroyFrame(QVideoFrame *frame)
{
    static const auto destroy = original<void(QVideoFrame *)>("_ZN11QVideoFrameD1Ev");
    __tsan_release(&sharedFrames);
    __tsan_acquire(&sharedFrames);
    destroy(frame);
}

extern "C" {

void g_mutex_lock(GMutex *mutex)
{
    static const auto take = original<void(GMutex *)>("g_mutex_lock");
    take(mutex);
    __tsan_acquire(mutex);
}

gboolean g_mutex_trylock(GMutex *mutex)
{
    static const auto take = original<gboolean(GMutex *)>("g_mutex_trylock");
    const gboolean isTaken = take(mutex);
    __tsan_acquire(mutex);
    return isTaken;
}

void g_mutex_unlock(GMutex *mutex)
{
    static const auto giveBack = original<void(GMutex *)>("g_mutex_unlock");
    __tsan_release(mutex);
    giveBack(mutex);
}

void g_rec_mutex_lock(GRecMutex *mutex)
{
    static const auto take = original<void(GRecMutex *)>("g_rec_mutex_lock");
    take(mutex);
    __tsan_acquire(mutex);
}

void g_rec_mutex_unlock(GRecMutex *mutex)
{
    static const auto giveBack = original<void(GRecMutex *)>("g_rec_mutex_unlock");
    __tsan_release(mutex);
    giveBack(mutex);
}

void g_cond_wait(GCond *condition, GMutex *mutex)
{
    static const auto wait = original<void(GCond *, GMutex *)>("g_cond_wait");
    __tsan_release(mutex);
    wait(condition, mutex);
    __tsan_acquire(mutex);
}

gboolean g_cond_wait_until(GCond *condition, GMutex *mutex, gint64 endTime)
{
    static const auto wait = original<gboolean(GCond *, GMutex *, gint64)>("g_cond_wait_until");
    __tsan_release(mutex);
    const gboolean isWoken = wait(condition, mutex, endTime);
    __tsan_acquire(mutex);
    return isWoken;
}

} // extern "C"
