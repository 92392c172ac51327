// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Owning pointers to GStreamer objects.

#ifndef GSTPOINTERS_H
#define GSTPOINTERS_H

#include <gst/gst.h>

#include <memory>

struct GstObjectUnref
{
    void operator()(gpointer object) const { gst_object_unref(object); }
};

struct GstMiniObjectUnref
{
    template<typename T> void operator()(T *object) const
    {
        gst_mini_object_unref(GST_MINI_OBJECT_CAST(object));
    }
};

using GstBufferPointer = std::unique_ptr<GstBuffer, GstMiniObjectUnref>;
using GstCapsPointer = std::unique_ptr<GstCaps, GstMiniObjectUnref>;
using GstSamplePointer = std::unique_ptr<GstSample, GstMiniObjectUnref>;

using GstBusPointer = std::unique_ptr<GstBus, GstObjectUnref>;
using GstElementPointer = std::unique_ptr<GstElement, GstObjectUnref>;
using GstElementFactoryPointer = std::unique_ptr<GstElementFactory, GstObjectUnref>;
using GstPadPointer = std::unique_ptr<GstPad, GstObjectUnref>;

#endif
