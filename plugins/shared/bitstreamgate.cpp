// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Keeps encoded frames away from a decoder until it can decode them.

#include "bitstreamgate.h"

/*!
    \class BitstreamGate

    While closed it lets nothing pass but a frame at which decoding can begin. What a frame is, its
    own bytes say, and the sender where nobody can read them.
*/

/*! Closes the gate for a new stream of the codec of \a inspector, which may be null. */
void BitstreamGate::reset(std::unique_ptr<FrameInspector> inspector)
{
    m_inspector = std::move(inspector);
    m_isOpen = false;
}

/*! Waits for the next key frame of the same stream. */
void BitstreamGate::close()
{
    m_isOpen = false;
}

/*!
    Says what to do with the frame in \a data, which isn't empty: decode it (parameter sets may have
    been added), take it without decoding (nothing but parameter sets), refuse it until there is a
    key frame, or refuse it as being no frame of the codec.
*/
BitstreamGate::Verdict BitstreamGate::examine(QByteArray *data, bool isSaidToBeKey)
{
    const FrameInspector::Kind said
            = isSaidToBeKey ? FrameInspector::KeyFrame : FrameInspector::DeltaFrame;
    const FrameInspector::Kind kind = m_inspector ? m_inspector->inspect(data) : said;
    if (kind == FrameInspector::Malformed)
        return Malformed;
    if (kind == FrameInspector::ParametersOnly)
        return Kept;
    if (kind == FrameInspector::KeyFrame) {
        m_isOpen = true;
        return AdmittedKeyFrame;
    }
    return m_isOpen ? Admitted : AwaitingKeyFrame;
}
