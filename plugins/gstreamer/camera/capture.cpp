// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// A camera's pipeline with the queue that it fills.

#include "capture.h"

#include <future>
#include <thread>

namespace {

// Stopping may take half a second, with everything else that it does.
const std::chrono::milliseconds longestWait(400);

} // namespace

/*!
    \class Capture

    Belongs to the thread that makes it, and to a thread of its own once it has been given up.
*/

Capture::Capture() = default;

/*! Gets the pipeline \a element, which ends in an appsink called "frames", ready to start. */
bool Capture::adopt(GstElementPointer element)
{
    pipeline.adopt(std::move(element));
    const GstElementPointer sink = pipeline.element("frames");
    frames.connectTo(GST_APP_SINK(sink.get()));
    return pipeline.setState(GST_STATE_READY);
}

/*!
    Takes the pipeline of \a capture down to \a state; no frame arrives any more when this returns.

    A device or a disk that hangs can't be interrupted. The result is then false, after 0.4 seconds:
    \a capture emits nothing any more and must not be used, and a thread of its own destroys it when
    the hanging call comes back.
*/
bool Capture::takeDown(const std::shared_ptr<Capture> &capture, GstState state)
{
    std::promise<void> promise;
    const std::future<void> isDown = promise.get_future();
    std::thread thread([capture, state, promise = std::move(promise)]() mutable {
        capture->pipeline.setState(state);
        promise.set_value();
    });
    if (isDown.wait_for(longestWait) == std::future_status::ready) {
        thread.join();
        capture->frames.clear();
        return true;
    }
    capture->abandon();
    thread.detach();
    return false;
}

void Capture::abandon()
{
    frames.disconnect();
    pipeline.disconnect();
    frames.moveToThread(nullptr);
    pipeline.moveToThread(nullptr);
}
