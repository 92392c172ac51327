// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Starts GStreamer on first use.

#include "gstreamersetup.h"

#include <gst/gst.h>

namespace {

struct SetupResult
{
    bool succeeded = false;
    QString errorText;
};

SetupResult setUp()
{
    GError *error = nullptr;
    SetupResult result;
    result.succeeded = gst_init_check(nullptr, nullptr, &error);
    if (error)
        result.errorText = QString::fromUtf8(error->message);
    g_clear_error(&error);
    return result;
}

} // namespace

/*!
    Starts GStreamer if nobody in the process has done so yet; true when it can be used. The result
    is that of the first call. \a errorText, if given, receives GStreamer's explanation of a
    failure.

    Other users may share GStreamer with this plugin, so it is never shut down again.
*/
bool GStreamerSetup::initialize(QString *errorText)
{
    static const SetupResult result = setUp();
    if (errorText)
        *errorText = result.errorText;
    return result.succeeded;
}
