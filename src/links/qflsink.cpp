// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The base of everything that receives encoded media from a source.

#include "qflsink.h"
#include "qflsink_p.h"

#include "qflsinkpointer.h"
#include "qflsource.h"

/*!
    \class QFLSink qflsink.h
    \brief A receiver of encoded media, linked to at most one source.

    The sink does not own its source. It must be unlinked before it is destroyed, and before its
    source is: neither is told of the other's end. A sink and its source are used from one thread,
    and call each other on it at once. A source in the midst of a call to a sink, its start() or
    stop() say, lets it link and unlink itself and be destroyed; the source that a sink is being
    linked to must live until the source before has been left.

    Activity and error are the sink's own: its implementation sets them, and they stay what they are
    when the sink is linked to another source.

    A QObject class that is a sink lists QFLSink with Q_INTERFACES; the identifier is QFLSink_iid,
    "facelink.sink/1.0". One that is derived from QFLEncodedVideoSink lists both, as
    \c {Q_INTERFACES(QFLEncodedVideoSink : QFLSink)}, so that it is found by either.
*/

/*!
    \enum QFLSink::Error

    Why a sink doesn't do its work. QFLSource::sinkErrorChanged() tells the source of it.

    \value NoError The sink works.
    \value FormatError The sink can't take the stream's format.
    \value TransportError The sink could not pass the stream on.
    \value OverrunError The sink could not keep up.
    \value ResourceError The sink lacks a resource.
    \value HardwareError The hardware behind the sink failed.
*/

/*!
    Makes a sink that is unlinked and inactive, without error.
*/
QFLSink::QFLSink() : QFLSink(*new QFLSinkPrivate) { }

/*!
    Makes a sink with the record \a dd, which it owns from then on.
*/
QFLSink::QFLSink(QFLSinkPrivate &dd) : d_ptr(&dd)
{
    d_ptr->self = QSharedPointer<QFLSink>(this, [](QFLSink *) {});
}

/*!
    Calls nobody: the sink must have been unlinked before.
*/
QFLSink::~QFLSink() = default;

/*!
    Unlinks from the current source by the virtual unlink(), records \a source and returns whether
    it accepts this sink. A source that refuses stays recorded: it is asked to remove the sink at
    the next link() or unlink(). Returns false for a null source, and without asking \a source if
    the sink has been destroyed or linked anew while it left the current one: the last link counts.
*/
bool QFLSink::link(QFLSource *source)
{
    // What is stopped on the way may delete the sink, or link it itself.
    const QFLSinkPointer self(this);
    const int link = ++d_ptr->linkCount;
    unlink();
    if (!source || !self || link != d_ptr->linkCount)
        return false;

    d_ptr->source = source;
    return source->addSink(this);
}

/*!
    Forgets \a source without calling it and returns true, or returns false if the sink isn't linked
    to it. A source that goes away uses this.
*/
bool QFLSink::unlink(QFLSource *source)
{
    if (!source || d_ptr->source != source)
        return false;

    d_ptr->source = nullptr;
    return true;
}

/*!
    Has the source, if there is one, remove this sink, and forgets it, whether the source has done
    so or not: a QFLEncoder removes only the sink that was linked to it last.
*/
void QFLSink::unlink()
{
    if (!d_ptr->source)
        return;

    // The sink's stop() may delete the sink, or link it anew, to the same source even.
    const QFLSinkPointer self(this);
    const int link = d_ptr->linkCount;
    d_ptr->source->removeSink(this);
    if (self && link == d_ptr->linkCount)
        d_ptr->source = nullptr;
}

/*!
    Returns whether the sink is receiving a stream, false at first.
*/
bool QFLSink::isActive() const
{
    return d_ptr->active;
}

/*!
    Sets the activity to \a active. A linked source is told of a change by
    QFLSource::sinkActiveChanged() before this returns. Called by the sink's implementation.
*/
void QFLSink::setActive(bool active)
{
    if (d_ptr->active == active)
        return;

    d_ptr->active = active;
    if (d_ptr->source)
        d_ptr->source->sinkActiveChanged(this, active);
}

/*!
    Returns the error that was set last, NoError at first. Only setError() clears it.
*/
QFLSink::Error QFLSink::error() const
{
    return d_ptr->error;
}

/*!
    Stores \a error and tells a linked source by QFLSource::sinkErrorChanged(), also when it is the
    error already stored. Called by the sink's implementation; NoError says that the sink has
    recovered.
*/
void QFLSink::setError(Error error)
{
    d_ptr->error = error;
    if (d_ptr->source)
        d_ptr->source->sinkErrorChanged(this);
}
