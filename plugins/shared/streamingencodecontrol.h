// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// What the other controls of an encoder service need to know of the encode control.

#ifndef STREAMINGENCODECONTROL_H
#define STREAMINGENCODECONTROL_H

#include <qflencodecontrol.h>

#include <QtMultimedia/qmediaencodersettings.h>

class StreamingEncodeControl : public QFLEncodeControl
{
    Q_OBJECT

public:
    explicit StreamingEncodeControl(QObject *parent = nullptr);

    virtual QVideoEncoderSettings streamSettings() const = 0;
    virtual void requestKeyFrame() = 0;
    virtual int capacity() const = 0;
    virtual int pending() = 0;
    virtual int undelivered() = 0;

    void reportError(QFLEncoder::Error code, const QString &text);

Q_SIGNALS:
    void pendingFell(int from, int to);
    void streamStarted(const QVideoEncoderSettings &settings);
    void streamDrained();
    void streamStopped();
};

#endif
