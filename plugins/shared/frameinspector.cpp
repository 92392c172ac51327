// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Looks into the bytes of an encoded frame.

#include "frameinspector.h"

/*!
    \class FrameInspector

    Tells the frames at which decoding can begin from those that build on others. There is one
    subclass for each codec. The bytes come from the network, so any number of any values is judged.
*/

/*!
    \fn FrameInspector::Kind FrameInspector::inspect(QByteArray *data)

    What the frame in \a data, which isn't empty, says that it is. Only the headers are read: the
    rest may still be damaged. What a key frame lacks may be added to it.
*/

FrameInspector::~FrameInspector() = default;
