// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Scriptable controls of an encoder or decoder service, sources and sinks.

#ifndef FAKECODECCONTROLS_H
#define FAKECODECCONTROLS_H

#include "fakecontrol.h"

#include <qfldecodecontrol.h>
#include <qflencodecontrol.h>
#include <qflencodedvideosink.h>
#include <qflencodedvideosourcecontrol.h>
#include <qflsinkpointer.h>

#include <QtMultimedia/qvideoencodersettingscontrol.h>

class FakeEncodeControl : public FakeControl<QFLEncodeControl>
{
public:
    QStringList supportedCodecs(bool hardware) const override { return codecs(hardware); }
    QList<QVideoFrame::PixelFormat> supportedPixelFormats() const override
    {
        return {QVideoFrame::Format_NV12, QVideoFrame::Format_YUV420P};
    }
    QFLEncoder::Status status() const override { return currentStatus; }
    bool start(const QVideoSurfaceFormat &f) override
    {
        return changeStatus(currentStatus, QFLEncoder::StartedStatus,
                            "start " + QByteArray::number(f.frameWidth()));
    }
    void drain() override { log("drain"); }
    void flush() override { log("flush"); }
    void stop() override { changeStatus(currentStatus, QFLEncoder::LoadedStatus, "stop"); }
    bool encode(const QVideoFrame &f) override { return log("encode", int(f.startTime())); }

    QFLEncoder::Status currentStatus = QFLEncoder::LoadedStatus;
};

class FakeDecodeControl : public FakeControl<QFLDecodeControl>
{
public:
    QStringList supportedCodecs(bool hardware) const override { return codecs(hardware); }
    bool isFormatSupported(const QVideoEncoderSettings &s) const override { return !s.isNull(); }
    bool start(const QVideoEncoderSettings &s) override
    {
        return changeStatus(currentStatus, QFLDecoder::StartedStatus,
                            "start " + QByteArray::number(s.bitRate()));
    }
    QVideoEncoderSettings videoSettings() const override { return {}; }
    QVideoSurfaceFormat outputFormat() const override { return {}; }
    bool decode(const QFLEncodedVideoFrame &f) override { return log("decode " + f.data()); }
    void drain() override { log("drain"); }
    void flush() override { log("flush"); }
    void stop() override { changeStatus(currentStatus, QFLDecoder::LoadedStatus, "stop"); }
    QFLDecoder::Status status() const override { return currentStatus; }

    QFLDecoder::Status currentStatus = QFLDecoder::LoadedStatus;
};

class FakeEncoderSettings : public FakeControl<QVideoEncoderSettingsControl>
{
public:
    QList<QSize> supportedResolutions(const QVideoEncoderSettings &settings,
                                      bool *continuous) const override
    {
        return continuous && (*continuous = true) ? QList<QSize> {settings.resolution()}
                                                  : QList<QSize>();
    }
    QList<qreal> supportedFrameRates(const QVideoEncoderSettings &settings,
                                     bool *continuous) const override
    {
        return continuous && (*continuous = true) ? QList<qreal> {settings.frameRate()}
                                                  : QList<qreal>();
    }
    QStringList supportedVideoCodecs() const override { return {}; }
    QString videoCodecDescription(const QString &) const override { return {}; }
    QVideoEncoderSettings videoSettings() const override { return current; }
    void setVideoSettings(const QVideoEncoderSettings &settings) override { current = settings; }

    QVideoEncoderSettings current;
};

/*! A source of encoded frames, as a control or on its own. */
template<typename Base> class FakeLinkable : public Base
{
public:
    bool addSink(QFLSink *sink) override
    {
        const QPointer<FakeLinkable> self(this);
        const QFLSinkPointer newSink(sink);
        const bool isNew = this->accepts && !sinks.contains(newSink);
        if (isNew)
            sinks.append(newSink);
        const bool isAccepted = this->log("addSink") && isNew;
        if (isNew && self && this->isLive && sinks.contains(newSink))
            QFLEncodedVideoSink::fromSink(sink)->start(QVideoEncoderSettings());
        return isAccepted && self && sinks.contains(newSink);
    }
    bool removeSink(QFLSink *sink) override
    {
        const QPointer<FakeLinkable> self(this);
        const QFLSinkPointer oldSink(sink);
        const bool isRemoved = removes;
        const bool wasLinked = isRemoved && sinks.removeOne(oldSink);
        this->log("removeSink");
        if (self && this->isLive && wasLinked && oldSink)
            QFLEncodedVideoSink::fromSink(sink)->stop();
        return isRemoved;
    }
    void sinkActiveChanged(QFLSink *, bool active) override { this->log("active", active); }
    void sinkErrorChanged(QFLSink *sink) override { this->log("error", sink->error()); }

    bool hasDestroyedSink() const
    {
        return std::any_of(sinks.begin(), sinks.end(),
                           [](const QFLSinkPointer &sink) { return sink.isNull(); });
    }
    QFLSink *lastSink() const { return sinks.value(0).data(); }

    QList<QFLSinkPointer> sinks;
    bool removes = true;
};

struct FakePlainSource : public QFLSource, public FakeControl<QObject>
{
};

using FakeEncodedSource = FakeLinkable<FakeControl<QFLEncodedVideoSourceControl>>;

class FakeSource : public FakeLinkable<FakePlainSource>
{
public:
    explicit FakeSource(const char *name = "s ") { setObjectName(QLatin1String(name)); }
};

class FakeSink : public QFLEncodedVideoSink
{
public:
    bool isFormatSupported(const QVideoEncoderSettings &) const override { return true; }
    bool encodedVideoFrame(const QFLEncodedVideoFrame &) override { return true; }
};

#endif
