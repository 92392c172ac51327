// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Keeps encoded frames away from a decoder until it can decode them.

#ifndef BITSTREAMGATE_H
#define BITSTREAMGATE_H

#include "frameinspector.h"

#include <memory>

class BitstreamGate
{
public:
    enum Verdict { Admitted, AdmittedKeyFrame, Kept, AwaitingKeyFrame, Malformed };

    void reset(std::unique_ptr<FrameInspector> inspector);
    void close();

    Verdict examine(QByteArray *data, bool isSaidToBeKey);

private:
    std::unique_ptr<FrameInspector> m_inspector;
    bool m_isOpen = false;
};

#endif
