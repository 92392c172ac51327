// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// What the front end adds to each frame: time, and allocations, of which there must be none.

#include <qfldecodecontrol.h>
#include <qfldecoder.h>
#include <qfldecodingvideosink.h>
#include <qflencodecontrol.h>
#include <qflencoder.h>
#include <qflencodervideosurface.h>

#include <private/qmediaserviceprovider_p.h>

#include <QtCore/qcoreapplication.h>
#include <QtMultimedia/qmediaservice.h>

#include <benchmark/benchmark.h>

#include <atomic>
#include <cstdlib>

static std::atomic<int> allocationCount = 0;

// Qt's containers allocate with malloc(), so that is where the counting has to be.
extern "C" void *__libc_malloc(std::size_t size);
extern "C" Q_DECL_EXPORT void *malloc(std::size_t size)
{
    ++allocationCount;
    return __libc_malloc(size);
}

namespace {

class IdleEncodeControl : public QFLEncodeControl
{
public:
    QStringList supportedCodecs(bool) const override { return {}; }
    QList<QVideoFrame::PixelFormat> supportedPixelFormats() const override { return {}; }
    QFLEncoder::Status status() const override { return QFLEncoder::StartedStatus; }
    bool start(const QVideoSurfaceFormat &) override { return true; }
    void drain() override { }
    void flush() override { }
    void stop() override { }
    bool encode(const QVideoFrame &frame) override { return frame.isValid(); }
};

class IdleDecodeControl : public QFLDecodeControl
{
public:
    QStringList supportedCodecs(bool) const override { return {}; }
    bool isFormatSupported(const QVideoEncoderSettings &) const override { return true; }
    bool start(const QVideoEncoderSettings &) override { return true; }
    QVideoEncoderSettings videoSettings() const override { return {}; }
    QVideoSurfaceFormat outputFormat() const override { return {}; }
    bool decode(const QFLEncodedVideoFrame &frame) override { return frame.isValid(); }
    void drain() override { }
    void flush() override { }
    void stop() override { }
    QFLDecoder::Status status() const override { return QFLDecoder::LoadedStatus; }
};

/*! A service with one encode and one decode control that do nothing. */
class IdleService : public QMediaService
{
public:
    IdleService() : QMediaService(nullptr) { }

    QMediaControl *requestControl(const char *name) override
    {
        if (qstrcmp(name, QFLEncodeControl_iid) == 0)
            return &encodeControl;
        return qstrcmp(name, QFLDecodeControl_iid) == 0 ? &decodeControl : nullptr;
    }
    void releaseControl(QMediaControl *) override { }

    IdleEncodeControl encodeControl;
    IdleDecodeControl decodeControl;
};

/*! Is the default provider, and gives everybody the same service. */
class IdleProvider : public QMediaServiceProvider
{
public:
    IdleProvider() { setDefaultServiceProvider(this); }
    ~IdleProvider() override { setDefaultServiceProvider(nullptr); }

    QMediaService *requestService(const QByteArray &, const QMediaServiceProviderHint &) override
    {
        return &service;
    }
    void releaseService(QMediaService *) override { }

    IdleService service;
};

QFLEncodedVideoFrame encodedFrame()
{
    QByteArray bytes(5000, 'x');
    return QFLEncodedVideoFrame(bytes, {QFLEncodedVideoFrame::Type_Key, 0});
}

template<typename Work> void measure(benchmark::State &state, Work work)
{
    const int before = allocationCount;
    for (auto step : state)
        work();
    state.counters["allocations"]
            = benchmark::Counter(allocationCount - before, benchmark::Counter::kAvgIterations);
}

/*! To compare with: what one allocation costs, and that it is counted. */
void oneByteArray(benchmark::State &state)
{
    measure(state, [] { benchmark::DoNotOptimize(QByteArray(16, 'x')); });
}
BENCHMARK(oneByteArray);

void rawFrameThroughSurface(benchmark::State &state)
{
    const IdleProvider provider;
    QFLEncoder encoder;
    QFLEncoderVideoSurface surface(&encoder);
    const QVideoFrame frame(16, QSize(2, 2), 8, QVideoFrame::Format_RGB32);
    measure(state, [&] { benchmark::DoNotOptimize(surface.present(frame)); });
}
BENCHMARK(rawFrameThroughSurface);

void encodedFrameToApplication(benchmark::State &state)
{
    IdleProvider provider;
    QFLEncoder encoder;
    int bytes = 0;
    QObject::connect(&encoder, &QFLEncoder::encodedVideoFrame,
                     [&](const QFLEncodedVideoFrame &frame) { bytes = frame.data().size(); });
    const QFLEncodedVideoFrame frame = encodedFrame();
    measure(state, [&] { emit provider.service.encodeControl.encodedVideoFrame(frame); });
    benchmark::DoNotOptimize(bytes);
}
BENCHMARK(encodedFrameToApplication);

void encodedFrameThroughSink(benchmark::State &state)
{
    const IdleProvider provider;
    QFLDecoder decoder;
    QFLDecodingVideoSink sink(&decoder);
    const QFLEncodedVideoFrame frame = encodedFrame();
    measure(state, [&] { benchmark::DoNotOptimize(sink.encodedVideoFrame(frame)); });
}
BENCHMARK(encodedFrameThroughSink);

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
