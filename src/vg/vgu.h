#pragma once

// The shape utilities of the engine, to the OpenVG 1.1 utility library. They append to a path and
// return their error directly: 0, one of the codes below, or VG_NO_CONTEXT_ERROR when nothing is
// current. Path errors that arise while appending are turned into these codes and are not left
// pending in the context.

#include "vg/vg.h"

enum VGUErrorCode : VGint {
    VGU_NO_ERROR = 0,
    VGU_NO_CONTEXT_ERROR = VG_NO_CONTEXT_ERROR,
    VGU_BAD_HANDLE_ERROR = 0xF000,
    VGU_ILLEGAL_ARGUMENT_ERROR = 0xF001,
    VGU_OUT_OF_MEMORY_ERROR = 0xF002,
    VGU_PATH_CAPABILITY_ERROR = 0xF003
};

enum VGUArcType : VGint { VGU_ARC_OPEN = 0xF100, VGU_ARC_CHORD = 0xF101, VGU_ARC_PIE = 0xF102 };

VGUErrorCode vguLine(VGPath path, VGfloat x0, VGfloat y0, VGfloat x1, VGfloat y1);
VGUErrorCode vguPolygon(VGPath path, const VGfloat* points, VGint count, VGboolean closed);
VGUErrorCode vguRect(VGPath path, VGfloat x, VGfloat y, VGfloat width, VGfloat height);
VGUErrorCode vguRoundRect(VGPath path, VGfloat x, VGfloat y, VGfloat width, VGfloat height,
                          VGfloat arcWidth, VGfloat arcHeight);
VGUErrorCode vguEllipse(VGPath path, VGfloat cx, VGfloat cy, VGfloat width, VGfloat height);
VGUErrorCode vguArc(VGPath path, VGfloat x, VGfloat y, VGfloat width, VGfloat height,
                    VGfloat startAngle, VGfloat angleExtent, VGint arcType);
