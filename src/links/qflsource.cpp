// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-3.0-or-later
// The interface of anything that produces encoded frames.

#include "qflsource.h"

/*!
    \class QFLSource
    \brief Something that produces encoded frames and delivers them to sinks.

    A source and its sinks are used from one thread. A QObject class that is a source lists
    QFLSource with Q_INTERFACES, so that qobject_cast finds it.
*/

/*!
    \fn bool QFLSource::addSink(QFLSink *sink)

    Accepts \a sink, which the source does not own, as a receiver of this source's frames. Called
    by QFLSink::link(), with the sink already recording this source. Returns false if the source
    doesn't deliver to it.
*/

/*!
    \fn bool QFLSource::removeSink(QFLSink *sink)

    Stops the delivery to \a sink: nothing of the sink may be called after this has returned.
    Returns whether the sink was removed.
*/

QFLSource::~QFLSource() = default;

/*!
    Called by a linked \a sink whose activity has just changed to \a active. Does nothing here.
*/
void QFLSource::sinkActiveChanged(QFLSink *, bool) { }

/*!
    Called by a linked \a sink each time its error, QFLSink::error(), has been set. Does nothing
    here.
*/
void QFLSource::sinkErrorChanged(QFLSink *) { }
