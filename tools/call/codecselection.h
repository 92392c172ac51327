// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Finds the codec that the command line asks for.

#ifndef CODECSELECTION_H
#define CODECSELECTION_H

#include "callerror.h"

#include <QtCore/qsize.h>
#include <QtMultimedia/qmediaencodersettings.h>

class CallSettings;
class QFLCodecInfo;

namespace CodecSelection {

QFLCodecInfo find(const CallSettings &settings, CallError *error);
QVideoEncoderSettings encoderSettings(const QFLCodecInfo &encoder, const QSize &size,
                                      const CallSettings &settings);

} // namespace CodecSelection

#endif
