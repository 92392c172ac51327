// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// A camera's pipeline with the queue that it fills.

#ifndef CAPTURE_H
#define CAPTURE_H

#include "framequeue.h"
#include "pipeline.h"

struct Capture
{
    Capture();

    bool adopt(GstElementPointer element);
    static bool takeDown(const std::shared_ptr<Capture> &capture, GstState state);

    FrameQueue frames;
    // Destroyed first: its threads use the queue.
    Pipeline pipeline;

private:
    Q_DISABLE_COPY(Capture)

    void abandon();
};

#endif
