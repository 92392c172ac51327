// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Lets a program speak the user's language.

#ifndef TOOLTRANSLATION_H
#define TOOLTRANSLATION_H

class ToolTranslation
{
public:
    static void install();
};

#endif
