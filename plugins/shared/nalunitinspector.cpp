// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Looks into the bytes of an H.264 or H.265 access unit.

#include "nalunitinspector.h"

namespace {

const int startCodeSize = 3;

int findStartCode(const QByteArray &data, int from)
{
    static const QByteArray startCode("\0\0\1", startCodeSize);
    return data.indexOf(startCode, from);
}

bool beginsWithStartCode(const QByteArray &data, int startCode)
{
    for (int i = 0; i < startCode; ++i) {
        if (data.at(i) != 0)
            return false;
    }
    const int header = startCode + startCodeSize;
    return startCode >= 0 && header < data.size() && !(data.at(header) & 0x80);
}

} // namespace

/*!
    \class NalUnitInspector

    Takes the byte-stream format. Parameter sets are remembered, and given back to a key frame that
    comes without them, so that a stream that sent them only once can go on after a flush.
*/

NalUnitInspector::NalUnitInspector(Syntax syntax) : m_syntax(syntax) { }

FrameInspector::Kind NalUnitInspector::inspect(QByteArray *data)
{
    const AccessUnit unit = parse(*data);
    if (!unit.isWellFormed)
        return Malformed;
    remember(unit.parameterSets);
    if (!unit.hasSlice) {
        m_parametersArePending = true;
        return ParametersOnly;
    }
    const bool hasSequence = !unit.parameterSets[Sequence].isEmpty();
    if (m_parameterSets[Sequence].isEmpty())
        return DeltaFrame;
    if (!hasSequence && (unit.isKey || m_parametersArePending)) {
        data->insert(unit.parameterPosition,
                     m_parameterSets[Video] + m_parameterSets[Sequence] + m_parameterSets[Picture]);
    }
    m_parametersArePending = false;
    // An H.264 stream may consist of recovery points, with parameter sets, instead of key frames.
    return unit.isKey || (m_syntax == H264 && hasSequence) ? KeyFrame : DeltaFrame;
}

NalUnitInspector::Role NalUnitInspector::roleOf(uchar header) const
{
    const int type = m_syntax == H264 ? header & 0x1f : header >> 1 & 0x3f;
    if (m_syntax == H265) {
        if (type <= 9)
            return Slice;
        if (type >= 16 && type <= 21)
            return KeySlice;
        return type >= 32 && type <= 35 ? Role(Video + type - 32) : Other;
    }
    if (type == 5)
        return KeySlice;
    if (type == 1 || type == 2)
        return Slice;
    return type >= 7 && type <= 9 ? Role(Sequence + type - 7) : Other;
}

NalUnitInspector::AccessUnit NalUnitInspector::parse(const QByteArray &data) const
{
    AccessUnit unit;
    int begin = findStartCode(data, 0);
    unit.isWellFormed = beginsWithStartCode(data, begin);
    // The parameter sets come before the first slice, so the bulk of the frame isn't searched.
    while (unit.isWellFormed && !unit.hasSlice && begin >= 0
           && begin + startCodeSize < data.size()) {
        const Role role = roleOf(uchar(data.at(begin + startCodeSize)));
        unit.isKey = role == KeySlice;
        unit.hasSlice = unit.isKey || role == Slice;
        const int next = unit.hasSlice ? -1 : findStartCode(data, begin + startCodeSize);
        const int end = next < 0 ? data.size() : next;
        if (role <= Picture)
            unit.parameterSets[role] += data.mid(begin, end - begin);
        else if (role == Delimiter)
            unit.parameterPosition = end;
        begin = next;
    }
    return unit;
}

/*! New parameter sets put those that build on them out of force. */
void NalUnitInspector::remember(const ParameterSets &parameterSets)
{
    bool isReplacing = false;
    for (int role = Video; role <= Picture; ++role) {
        isReplacing = isReplacing || !parameterSets[role].isEmpty();
        if (isReplacing)
            m_parameterSets[role] = parameterSets[role];
    }
}
