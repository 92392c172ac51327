// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-3.0-or-later
// Sets encoder elements up for live video without delay.

#ifndef ENCODERELEMENT_H
#define ENCODERELEMENT_H

#include <gst/gst.h>

#include <QtCore/qglobal.h>

namespace EncoderElement {

void configure(GstElement *encoder, qreal frameRate);
void setBitRate(GstElement *encoder, int bitRate);
void requestKeyFrame(GstElement *encoder);

} // namespace EncoderElement

#endif
