// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// A GStreamer pipeline whose bus messages arrive in the thread of its owner.

#ifndef PIPELINE_H
#define PIPELINE_H

#include "gate.h"
#include "gstpointers.h"
#include "postedqueue.h"

#include <QtCore/qstring.h>

#include <future>
#include <vector>

class Pipeline : public QObject
{
    Q_OBJECT

public:
    enum ErrorKind { ResourceError, FormatError, HardwareError };

    explicit Pipeline(QObject *parent = nullptr);
    ~Pipeline() override;

    static GstElementPointer parse(const QByteArray &description, QString *errorText);

    bool build(const QByteArray &description);
    void adopt(GstElementPointer pipeline);
    void closeGates();
    bool takeDown(GstState state, const std::shared_ptr<void> &companion = nullptr);
    void awaitThoseLetGo(std::size_t most);

    bool isEmpty() const;
    GstElementPointer element(const char *name) const;
    bool setState(GstState state);

    void onSample(const char *sink, const std::function<bool(GstSample *)> &call);
    void onNeedData(const char *source, const std::function<void()> &call);
    void onUpstreamEvent(const char *element, const std::function<void(GstEvent *)> &call);

Q_SIGNALS:
    void errorReported(Pipeline::ErrorKind kind, const QString &text);
    void endOfStreamReached();

private:
    struct Report
    {
        bool isError = false;
        ErrorKind kind = ResourceError;
        QString text;
    };

    template<typename Function> gpointer gated(const std::function<Function> &function);
    static GstBusSyncReply handleMessage(GstBus *bus, GstMessage *message, gpointer call);
    static Report readError(GstMessage *message);
    void release();
    void beginRun();
    void handleReport(const Report &report);

    GstElementPointer m_pipeline;
    std::vector<std::shared_ptr<Gate>> m_gates;
    std::vector<std::future<void>> m_takeDowns;
    PostedQueue<Report> m_reports;
    Run m_run;
    bool m_errorReported = false;
};

#endif
