// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Looks into the bytes of an H.264 or H.265 access unit.

#ifndef NALUNITINSPECTOR_H
#define NALUNITINSPECTOR_H

#include "frameinspector.h"

#include <array>

class NalUnitInspector : public FrameInspector
{
public:
    enum Syntax { H264, H265 };

    explicit NalUnitInspector(Syntax syntax);

    Kind inspect(QByteArray *data) override;

private:
    enum Role { Video, Sequence, Picture, Delimiter, Slice, KeySlice, Other };

    using ParameterSets = std::array<QByteArray, Picture + 1>;

    struct AccessUnit
    {
        bool isWellFormed = false;
        bool hasSlice = false;
        bool isKey = false;
        int parameterPosition = 0;
        ParameterSets parameterSets;
    };

    Role roleOf(uchar header) const;
    AccessUnit parse(const QByteArray &data) const;
    void remember(const ParameterSets &parameterSets);

    const Syntax m_syntax;
    ParameterSets m_parameterSets;
    bool m_parametersArePending = false;
};

#endif
