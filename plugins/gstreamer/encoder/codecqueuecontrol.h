// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Tells how full the encoder's input is.

#ifndef CODECQUEUECONTROL_H
#define CODECQUEUECONTROL_H

#include "qflcodecqueuecontrol.h"

class EncodeControl;

class CodecQueueControl : public QFLCodecQueueControl
{
    Q_OBJECT

public:
    explicit CodecQueueControl(EncodeControl *encodeControl, QObject *parent = nullptr);

    int capacity() const override;
    int pending() const override;
    int lowWatermark() const override;
    void setLowWatermark(int count) override;

private:
    void handleFall(int from, int to);

    EncodeControl *m_encodeControl;
    int m_lowWatermark = 0;
};

#endif
