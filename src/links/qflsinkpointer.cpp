// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// A pointer to a sink that becomes null when the sink is destroyed.

#include "qflsinkpointer.h"

#include "qflsink_p.h"

/*!
    \class QFLSinkPointer qflsinkpointer.h
    \brief A pointer to a sink that becomes null when the sink is destroyed.

    It is to sinks, which need not be QObjects, what QPointer is to these. A source keeps its sinks by
    such pointers, so that one that was destroyed without being unlinked is not called any more; and
    whoever calls a sink finds out by one whether the sink has been destroyed in that call. Copies
    refer to the same sink. The pointer doesn't own it, and is used in the sink's thread.
*/

/*!
    \fn QFLSinkPointer::QFLSinkPointer()

    Makes a null pointer.
*/

/*!
    Makes a pointer to \a sink, which may be null.
*/
QFLSinkPointer::QFLSinkPointer(QFLSink *sink)
{
    if (sink)
        m_sink = sink->d_ptr->self;
}

/*!
    Returns the sink, null if there is none or it has been destroyed.
*/
QFLSink *QFLSinkPointer::data() const
{
    return m_sink.toStrongRef().data();
}

/*!
    \fn bool QFLSinkPointer::isNull() const

    Returns whether there is no sink, or it has been destroyed.
*/

/*!
    \fn QFLSink *QFLSinkPointer::operator->() const

    Returns data(), to call the sink.
*/

/*!
    \fn QFLSinkPointer::operator bool() const

    Returns whether there is a sink that exists.
*/

/*!
    \fn bool QFLSinkPointer::operator==(const QFLSinkPointer &other) const

    Returns whether this pointer and \a other were made for the same sink, destroyed or not.
*/

/*!
    \fn bool QFLSinkPointer::operator!=(const QFLSinkPointer &other) const

    Returns whether this pointer and \a other were made for different sinks.
*/
