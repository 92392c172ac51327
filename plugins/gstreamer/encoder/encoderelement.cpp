// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-3.0-or-later
// Sets encoder elements up for live video without delay.

#include "encoderelement.h"

#include <QtCore/qbytearray.h>

#include <gst/video/video.h>

namespace {

struct PropertySetting
{
    const char *factoryName;
    const char *property;
    const char *value;
};

// By default x264enc holds frames back, and vp8enc on several busy cores falls seconds behind.
const PropertySetting liveSettings[] = {
        {"x264enc", "tune", "zerolatency"},
        {"x264enc", "speed-preset", "superfast"},
        {"openh264enc", "rate-control", "bitrate"},
        {"openh264enc", "complexity", "low"},
        {"vp8enc", "deadline", "1"},
        {"vp8enc", "cpu-used", "-12"},
        {"vp8enc", "threads", "1"},
        {"vp8enc", "end-usage", "cbr"},
        {"vp8enc", "lag-in-frames", "0"},
};

const char *const keyFrameDistanceProperties[]
        = {"key-int-max", "gop-size", "keyframe-max-dist", "keyframe-period"};

const char *const bitRateProperties[] = {"bitrate", "target-bitrate"};

constexpr qreal secondsBetweenKeyFrames = 2;

GParamSpec *property(GstElement *element, const char *name)
{
    return g_object_class_find_property(G_OBJECT_GET_CLASS(element), name);
}

bool isInKilobits(GParamSpec *parameter)
{
    const QByteArray description = QByteArray(g_param_spec_get_blurb(parameter)).toLower();
    return description.contains("kbit") || description.contains("kbps")
            || description.contains("kilobit");
}

void setNumber(GstElement *element, const char *name, qint64 value)
{
    gst_util_set_object_arg(G_OBJECT(element), name, QByteArray::number(value).constData());
}

} // namespace

/*!
    Makes \a encoder, which isn't running yet, return each frame before it is given the next, with a
    key frame at regular intervals, so that a receiver that joins late gets a picture without
    asking.
*/
void EncoderElement::configure(GstElement *encoder, qreal frameRate)
{
    const QByteArray factoryName = GST_OBJECT_NAME(gst_element_get_factory(encoder));
    for (const PropertySetting &setting : liveSettings) {
        if (factoryName == setting.factoryName)
            gst_util_set_object_arg(G_OBJECT(encoder), setting.property, setting.value);
    }
    for (const char *name : keyFrameDistanceProperties) {
        if (property(encoder, name))
            setNumber(encoder, name, qMax(1, qRound(frameRate * secondsBetweenKeyFrames)));
    }
}

/*! Sets the target, in bits per second; a running encoder takes it on at once. */
void EncoderElement::setBitRate(GstElement *encoder, int bitRate)
{
    for (const char *name : bitRateProperties) {
        GParamSpec *parameter = property(encoder, name);
        if (parameter)
            setNumber(encoder, name, isInKilobits(parameter) ? qMax(1, bitRate / 1000) : bitRate);
    }
}

/*! Makes the next frame that enters \a encoder a key frame. */
void EncoderElement::requestKeyFrame(GstElement *encoder)
{
    gst_element_send_event(
            encoder, gst_video_event_new_upstream_force_key_unit(GST_CLOCK_TIME_NONE, TRUE, 0));
}
