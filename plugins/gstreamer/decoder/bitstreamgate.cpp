// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-3.0-or-later
// Keeps encoded frames away from a decoder until it can decode them.

#include "bitstreamgate.h"

namespace {

enum NalUnitType {
    NonIdrSlice = 1,
    PartitionedSlice = 2,
    IdrSlice = 5,
    SequenceParameters = 7,
    PictureParameters = 8,
    AccessUnitDelimiter = 9
};

struct AccessUnit
{
    bool isWellFormed = false;
    bool hasSlice = false;
    bool isIdr = false;
    int parameterPosition = 0;
    QByteArray sequenceParameters;
    QByteArray pictureParameters;

    bool isRandomAccessPoint() const
    {
        return hasSlice && (isIdr || !sequenceParameters.isEmpty());
    }
};

int findStartCode(const QByteArray &data, int from)
{
    static const QByteArray startCode("\0\0\1", 3);
    return data.indexOf(startCode, from);
}

void addNalUnit(AccessUnit *unit, int type, const QByteArray &bytes, int end)
{
    switch (type) {
    case NonIdrSlice:
    case PartitionedSlice:
    case IdrSlice:
        unit->hasSlice = true;
        unit->isIdr = type == IdrSlice;
        break;
    case SequenceParameters:
        unit->sequenceParameters += bytes;
        break;
    case PictureParameters:
        unit->pictureParameters += bytes;
        break;
    case AccessUnitDelimiter:
        unit->parameterPosition = end;
        break;
    }
}

bool beginsWithStartCode(const QByteArray &data, int startCode)
{
    for (int i = 0; i < startCode; ++i) {
        if (data.at(i) != 0)
            return false;
    }
    return startCode >= 0 && startCode + 3 < data.size() && !(data.at(startCode + 3) & 0x80);
}

AccessUnit parseAccessUnit(const QByteArray &data)
{
    AccessUnit unit;
    int begin = findStartCode(data, 0);
    unit.isWellFormed = beginsWithStartCode(data, begin);
    // The parameter sets come before the first slice, so the bulk of the frame isn't searched.
    while (unit.isWellFormed && !unit.hasSlice && begin >= 0 && begin + 3 < data.size()) {
        const int type = data.at(begin + 3) & 0x1f;
        const bool isSlice = type == NonIdrSlice || type == PartitionedSlice || type == IdrSlice;
        const int next = isSlice ? -1 : findStartCode(data, begin + 3);
        const int end = next < 0 ? data.size() : next;
        addNalUnit(&unit, type, isSlice ? QByteArray() : data.mid(begin, end - begin), end);
        begin = next;
    }
    return unit;
}

} // namespace

/*!
    \class BitstreamGate

    Looks into the bytes of encoded frames: H.264 access units in byte-stream format and VP8 frames.
    While closed it lets nothing pass but a frame at which decoding can begin. H.264 parameter sets
    are remembered, and given back to a key frame that comes without them, so that a stream that
    sent them only once can go on after a flush.
*/

/*! Closes the gate for a new stream of \a codec. */
void BitstreamGate::reset(const QString &codec)
{
    *this = BitstreamGate();
    m_codec = codec;
}

/*! Waits for the next key frame of the same stream. */
void BitstreamGate::close()
{
    m_isOpen = false;
}

/*!
    Says what to do with the frame in \a data: decode it (the parameter sets may have been added),
    take it without decoding (nothing but parameter sets), refuse it until there is a key frame, or
    refuse it as being no frame of the codec.
*/
BitstreamGate::Verdict BitstreamGate::examine(QByteArray *data)
{
    return m_codec == QLatin1String("H264") ? examineAccessUnit(data) : examineVp8Frame(*data);
}

BitstreamGate::Verdict BitstreamGate::examineAccessUnit(QByteArray *data)
{
    const AccessUnit unit = parseAccessUnit(*data);
    if (!unit.isWellFormed)
        return Malformed;
    if (!unit.sequenceParameters.isEmpty()) {
        m_sequenceParameters = unit.sequenceParameters;
        m_pictureParameters = unit.pictureParameters;
    } else if (!unit.pictureParameters.isEmpty()) {
        m_pictureParameters = unit.pictureParameters;
    }
    if (!unit.hasSlice) {
        m_parametersArePending = true;
        return Kept;
    }
    if (!m_isOpen && (!unit.isRandomAccessPoint() || m_sequenceParameters.isEmpty()))
        return AwaitingKeyFrame;
    if (unit.sequenceParameters.isEmpty() && (!m_isOpen || m_parametersArePending))
        data->insert(unit.parameterPosition, m_sequenceParameters + m_pictureParameters);
    m_parametersArePending = false;
    m_isOpen = true;
    return Admitted;
}

BitstreamGate::Verdict BitstreamGate::examineVp8Frame(const QByteArray &data)
{
    static const QByteArray startCode("\x9d\x01\x2a", 3);
    const int frameTagSize = 3;
    const int keyFrameHeaderSize = 10;
    const bool isKeyFrame = !(data.at(0) & 1);
    const int headerSize = isKeyFrame ? keyFrameHeaderSize : frameTagSize;
    if (data.size() < headerSize || (isKeyFrame && data.mid(frameTagSize, 3) != startCode))
        return Malformed;
    if (!m_isOpen && !isKeyFrame)
        return AwaitingKeyFrame;
    m_isOpen = true;
    return Admitted;
}
