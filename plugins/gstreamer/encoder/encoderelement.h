// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Sets an encoder element up for live video, and makes it produce key frames.

#ifndef ENCODERELEMENT_H
#define ENCODERELEMENT_H

#include "encodertraits.h"
#include "gstpointers.h"

#include <atomic>

class EncoderConfiguration;

class EncoderElement
{
public:
    EncoderElement(GstElementPointer element, const EncoderConfiguration &configuration);
    ~EncoderElement();

    void setBitRate(int bitRate);
    void requestKeyFrame(GstClockTime after = GST_CLOCK_TIME_NONE);
    void restart();

private:
    Q_DISABLE_COPY(EncoderElement)

    enum Order { NoOrder, KeyFrameOrder, RestartOrder };

    GParamSpec *property(const QByteArray &name) const;
    bool takesBitRateWhileRunning() const;
    void applyBitRate(int wanted);
    void setOptions(const EncoderConfiguration &configuration);
    void set(const QByteArray &name, const QByteArray &value);
    void apply(QByteArray settings);

    static GstPadProbeReturn beforeFrame(GstPad *input, GstPadProbeInfo *info, gpointer self);
    void restartBehind(GstPad *input);

    const GstElementPointer m_element;
    const EncoderTraits &m_traits;
    const int m_keyFrameDistance;
    const int m_finestQuantizer;
    GstPadPointer m_input;
    gulong m_probe = 0;
    std::atomic<Order> m_order = NoOrder;
    std::atomic<GstClockTime> m_after = GST_CLOCK_TIME_NONE;
};

#endif
