// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Receiver, decoder and surface.

#ifndef RECEIVEPATH_H
#define RECEIVEPATH_H

#include "framereceiver.h"

#include <qfldecoder.h>
#include <qfldecodingvideosink.h>

class ReceivePath : public QObject
{
    Q_OBJECT

public:
    ReceivePath(QIODevice *connection, const QString &codec);
    ~ReceivePath() override;

    bool start(QAbstractVideoSurface *surface);

Q_SIGNALS:
    void failed(const QString &text);

private:
    void connectErrors();

    FrameReceiver m_receiver;
    QFLDecoder m_decoder;
    QFLDecodingVideoSink *m_sink;
};

#endif
