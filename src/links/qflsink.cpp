// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-3.0-or-later
// The base of everything that receives encoded media from a source.

#include "qflsink.h"
#include "qflsink_p.h"

#include "qflsource.h"

/*!
    \class QFLSink
    \brief A receiver of encoded media, linked to at most one source.

    The sink does not own its source. It must be unlinked before it is destroyed, and before its
    source is: neither is told of the other's end. A sink and its source are used from one thread.
*/

/*!
    \enum QFLSink::Error

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
QFLSink::QFLSink() : d_ptr(new QFLSinkPrivate) { }

/*!
    Makes a sink with the record \a dd, which it owns from then on.
*/
QFLSink::QFLSink(QFLSinkPrivate &dd) : d_ptr(&dd) { }

QFLSink::~QFLSink() = default;

/*!
    Unlinks from the current source, records \a source and returns whether it accepts this sink. A
    source that refuses stays recorded: it is asked to remove the sink at the next link() or
    unlink(). Returns false for a null source.
*/
bool QFLSink::link(QFLSource *source)
{
    unlink();
    if (!source)
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
    Has the source, if there is one, remove this sink, and forgets it.
*/
void QFLSink::unlink()
{
    if (!d_ptr->source)
        return;

    // The source may link the sink to another one in its place.
    QFLSource *const source = d_ptr->source;
    source->removeSink(this);
    if (d_ptr->source == source)
        d_ptr->source = nullptr;
}

/*!
    Returns whether the sink is receiving a stream.
*/
bool QFLSink::isActive() const
{
    return d_ptr->active;
}

/*!
    Sets the activity to \a active and tells the source of a change.
*/
void QFLSink::setActive(bool active)
{
    if (d_ptr->active == active)
        return;

    d_ptr->active = active;
    if (d_ptr->source)
        d_ptr->source->sinkActiveChanged(this, active);
}

QFLSink::Error QFLSink::error() const
{
    return d_ptr->error;
}

/*!
    Stores \a error and tells the source, also when it is the error already stored.
*/
void QFLSink::setError(Error error)
{
    d_ptr->error = error;
    if (d_ptr->source)
        d_ptr->source->sinkErrorChanged(this);
}
