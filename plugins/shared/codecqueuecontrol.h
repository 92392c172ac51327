// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Tells how full the encoder's input is.

#ifndef CODECQUEUECONTROL_H
#define CODECQUEUECONTROL_H

#include "qflcodecqueuecontrol.h"

class StreamingEncodeControl;

class CodecQueueControl : public QFLCodecQueueControl
{
    Q_OBJECT

public:
    explicit CodecQueueControl(StreamingEncodeControl *encodeControl, QObject *parent = nullptr);

    int capacity() const override;
    int pending() const override;
    int lowWatermark() const override;
    void setLowWatermark(int count) override;

private:
    void handleFall(int from, int to);

    StreamingEncodeControl *m_encodeControl;
    int m_lowWatermark = 0;
};

#endif
