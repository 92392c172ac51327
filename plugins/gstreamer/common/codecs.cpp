// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-3.0-or-later
// The encoder and decoder elements that the backend offers.

#include "codecs.h"

#include "gstpointers.h"
#include "gstreamersetup.h"

#include <algorithm>

namespace {

struct CodecName
{
    const char *name;
    const char *caps;
};

// The first is what an application gets that doesn't choose.
const CodecName codecNames[] = {
        {"H264", "video/x-h264"},
        {"VP8", "video/x-vp8, codec-alpha=(boolean)false"},
};

struct Candidate
{
    CodecElement element;
    guint rank = 0;
};

// OMX elements get as far as READY without hardware and fail only at the first frame.
bool isExcluded(const QByteArray &factoryName)
{
    return factoryName.startsWith("omx") || factoryName.endsWith("_omx");
}

bool reachesReady(GstElementFactory *factory)
{
    GstElement *floating = gst_element_factory_create(factory, nullptr);
    if (!floating)
        return false;
    const GstElementPointer element(GST_ELEMENT(gst_object_ref_sink(floating)));
    const bool isReady
            = gst_element_set_state(element.get(), GST_STATE_READY) != GST_STATE_CHANGE_FAILURE;
    gst_element_set_state(element.get(), GST_STATE_NULL);
    return isReady;
}

QVector<Candidate> candidates(const CodecName &codec, bool isEncoder)
{
    const GstElementFactoryListType type = isEncoder
            ? GST_ELEMENT_FACTORY_TYPE_VIDEO_ENCODER
            : GST_ELEMENT_FACTORY_TYPE_DECODER | GST_ELEMENT_FACTORY_TYPE_MEDIA_VIDEO;
    const GstCapsPointer caps(gst_caps_from_string(codec.caps));
    GList *all = gst_element_factory_list_get_elements(type, GST_RANK_NONE);
    GList *fitting = gst_element_factory_list_filter(all, caps.get(),
                                                     isEncoder ? GST_PAD_SRC : GST_PAD_SINK, FALSE);
    QVector<Candidate> result;
    for (const GList *node = fitting; node; node = node->next) {
        auto *factory = static_cast<GstElementFactory *>(node->data);
        const QByteArray name = GST_OBJECT_NAME(factory);
        if (isExcluded(name) || !reachesReady(factory))
            continue;
        const bool isHardware
                = gst_element_factory_list_is_type(factory, GST_ELEMENT_FACTORY_TYPE_HARDWARE);
        result.append({{name, QString::fromLatin1(codec.name), isEncoder, isHardware},
                       gst_plugin_feature_get_rank(GST_PLUGIN_FEATURE(factory))});
    }
    gst_plugin_feature_list_free(fitting);
    gst_plugin_feature_list_free(all);
    return result;
}

QVector<CodecElement> findElements(bool isEncoder)
{
    QVector<CodecElement> result;
    if (!GStreamerSetup::initialize())
        return result;
    for (const CodecName &codec : codecNames) {
        QVector<Candidate> found = candidates(codec, isEncoder);
        std::stable_sort(found.begin(), found.end(),
                         [](const Candidate &a, const Candidate &b) { return a.rank > b.rank; });
        for (const Candidate &candidate : qAsConst(found))
            result.append(candidate.element);
    }
    std::stable_partition(result.begin(), result.end(), [](const CodecElement &element) {
        return element.isHardwareAccelerated;
    });
    return result;
}

} // namespace

/*!
    The usable encoder elements, those in hardware first, the better ranked ones of a codec before
    the others. They are looked for once in a process, which takes a moment: every one of them is
    opened.
*/
QVector<CodecElement> Codecs::encoders()
{
    static const QVector<CodecElement> elements = findElements(true);
    return elements;
}

/*! The usable decoder elements, ordered and cached as encoders() are. */
QVector<CodecElement> Codecs::decoders()
{
    static const QVector<CodecElement> elements = findElements(false);
    return elements;
}

/*! The codec names of \a elements, each once, in the order of the elements. */
QStringList Codecs::names(const QVector<CodecElement> &elements, bool hardwareOnly)
{
    QStringList result;
    for (const CodecElement &element : elements) {
        if (element.isHardwareAccelerated || !hardwareOnly)
            result.append(element.codec);
    }
    result.removeDuplicates();
    return result;
}

/*! GStreamer's title of the element; empty when there is no such element. */
QString Codecs::description(const QByteArray &factoryName)
{
    if (factoryName.isEmpty() || !GStreamerSetup::initialize())
        return QString();
    const GstElementFactoryPointer factory(gst_element_factory_find(factoryName.constData()));
    if (!factory)
        return QString();
    return QString::fromUtf8(
            gst_element_factory_get_metadata(factory.get(), GST_ELEMENT_METADATA_LONGNAME));
}

/*!
    The first of \a elements with the codec name or the factory name \a codecOrFactory; for an empty
    name that of the preferred codec. The factory name of the result is empty when there is none.
*/
CodecElement Codecs::find(const QVector<CodecElement> &elements, const QString &codecOrFactory)
{
    if (codecOrFactory.isEmpty()) {
        for (const CodecName &codec : codecNames) {
            const CodecElement element = find(elements, QString::fromLatin1(codec.name));
            if (!element.factoryName.isEmpty())
                return element;
        }
        return CodecElement();
    }
    for (const CodecElement &element : elements) {
        if (element.codec == codecOrFactory
            || QString::fromUtf8(element.factoryName) == codecOrFactory)
            return element;
    }
    return CodecElement();
}
