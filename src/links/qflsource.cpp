// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The interface of anything that produces encoded frames.

#include "qflsource.h"

/*!
    \class QFLSource qflsource.h
    \brief Something that produces encoded frames and delivers them to sinks.

    A source and its sinks are used from one thread. An application doesn't call these functions: a
    QFLSink does, when it is linked and unlinked and when its activity or its error changes. The
    source owns none of its sinks.

    A QObject class that is a source lists QFLSource with Q_INTERFACES, so that qobject_cast finds
    it; the identifier is QFLSource_iid, "facelink.source/1.0".
*/

/*!
    \fn bool QFLSource::addSink(QFLSink *sink)

    Accepts \a sink as a receiver of this source's frames. Called by QFLSink::link(), with the sink
    already recording this source; a stream that is under way may be started in the sink at once,
    and the sink may remove itself upon that. Note the sink before it is started, therefore, by a
    QFLSinkPointer, and find out by QFLEncodedVideoSink::fromSink() whether it takes video. Returns
    false if the source doesn't deliver to it, and then calls nothing of it later.
*/

/*!
    \fn bool QFLSource::removeSink(QFLSink *sink)

    Stops the delivery to \a sink. Called by QFLSink::unlink(), and by QFLSink::link() for the
    source before, also if that has refused the sink. A sink that was started is stopped on the way;
    nothing of it may be called after this has returned. Returns whether the sink was removed, false
    for one that the source doesn't know.
*/

/*!
    Calls no sink: the sinks must have been unlinked before.
*/
QFLSource::~QFLSource() = default;

/*!
    \fn void QFLSource::sinkActiveChanged(QFLSink *sink, bool active)

    Called by a linked \a sink whose activity has just changed to \a active, from within
    QFLSink::setActive(). Does nothing here.
*/
void QFLSource::sinkActiveChanged(QFLSink *, bool) { }

/*!
    \fn void QFLSource::sinkErrorChanged(QFLSink *sink)

    Called by a linked \a sink each time its error, QFLSink::error(), has been set, from within
    QFLSink::setError(). Does nothing here.
*/
void QFLSource::sinkErrorChanged(QFLSink *) { }
