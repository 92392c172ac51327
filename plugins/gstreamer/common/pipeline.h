// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// A GStreamer pipeline whose bus messages arrive in the thread of its owner.

#ifndef PIPELINE_H
#define PIPELINE_H

#include "gstpointers.h"

#include <QtCore/qobject.h>
#include <QtCore/qstring.h>

#include <atomic>

class Pipeline : public QObject
{
    Q_OBJECT

public:
    enum ErrorKind { ResourceError, FormatError, HardwareError };

    explicit Pipeline(QObject *parent = nullptr);
    ~Pipeline() override;

    void adopt(GstElementPointer pipeline);
    void reset();
    GstElementPointer release();

    bool isEmpty() const;
    GstElementPointer element(const char *name) const;
    bool setState(GstState state);

Q_SIGNALS:
    void errorReported(Pipeline::ErrorKind kind, const QString &text);
    void endOfStreamReached();

private:
    static GstBusSyncReply handleMessage(GstBus *bus, GstMessage *message, gpointer self);
    void postError(int run, GstMessage *message);
    void beginRun();
    void reportError(int run, ErrorKind kind, const QString &text);
    void reportEndOfStream(int run);

    GstElementPointer m_pipeline;
    std::atomic<int> m_run = 0;
    bool m_errorReported = false;
};

#endif
