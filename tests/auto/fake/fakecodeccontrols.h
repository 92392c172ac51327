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
    bool start(const QVideoSurfaceFormat &f) override { return log("start", f.frameWidth()); }
    void drain() override { log("drain"); }
    void flush() override { log("flush"); }
    void stop() override { log("stop"); }
    bool encode(const QVideoFrame &f) override { return log("encode", int(f.startTime())); }

    QFLEncoder::Status currentStatus = QFLEncoder::LoadedStatus;
};

class FakeDecodeControl : public FakeControl<QFLDecodeControl>
{
public:
    QStringList supportedCodecs(bool hardware) const override { return codecs(hardware); }
    bool isFormatSupported(const QVideoEncoderSettings &s) const override { return !s.isNull(); }
    bool start(const QVideoEncoderSettings &s) override { return log("start", s.bitRate()); }
    QVideoEncoderSettings videoSettings() const override { return {}; }
    QVideoSurfaceFormat outputFormat() const override { return {}; }
    bool decode(const QFLEncodedVideoFrame &f) override { return log("decode " + f.data()); }
    void drain() override { log("drain"); }
    void flush() override { log("flush"); }
    void stop() override { log("stop"); }
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
        lastSink = sink;
        return this->log("addSink");
    }
    bool removeSink(QFLSink *) override { return this->log("removeSink") && removes; }
    void sinkActiveChanged(QFLSink *, bool active) override { this->log("active", active); }
    void sinkErrorChanged(QFLSink *sink) override { this->log("error", sink->error()); }

    QFLSink *lastSink = nullptr;
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
