#pragma once

// Entry points and enumerations of the CalvaneVG engine, named and numbered as in OpenVG 1.1.
//
// Every entry point works on the current context and surface (engine.h binds them). Without a
// current pair it does nothing and returns its failure value. Errors are never returned: the
// first one is kept in the context until vgGetError reads it.

#include <cstdint>

using VGfloat = float;
using VGbyte = int8_t;
using VGubyte = uint8_t;
using VGshort = int16_t;
using VGint = int32_t;
using VGuint = uint32_t;
using VGbitfield = uint32_t;
using VGHandle = uint32_t;  ///< index in the low 26 bits, context id in the high 6; 0 is none
using VGPath = VGHandle;
using VGPaint = VGHandle;
using VGImage = VGHandle;
using VGMaskLayer = VGHandle;

inline constexpr VGHandle VG_INVALID_HANDLE = 0;

enum VGboolean : VGint { VG_FALSE = 0, VG_TRUE = 1 };

enum VGErrorCode : VGint {
    VG_NO_ERROR = 0,
    VG_BAD_HANDLE_ERROR = 0x1000,
    VG_ILLEGAL_ARGUMENT_ERROR = 0x1001,
    VG_OUT_OF_MEMORY_ERROR = 0x1002,
    VG_PATH_CAPABILITY_ERROR = 0x1003,
    VG_UNSUPPORTED_IMAGE_FORMAT_ERROR = 0x1004,
    VG_UNSUPPORTED_PATH_FORMAT_ERROR = 0x1005,
    VG_IMAGE_IN_USE_ERROR = 0x1006,
    VG_NO_CONTEXT_ERROR = 0x1007
};

enum VGParamType : VGint {
    VG_MATRIX_MODE = 0x1100,
    VG_FILL_RULE = 0x1101,
    VG_IMAGE_QUALITY = 0x1102,
    VG_RENDERING_QUALITY = 0x1103,
    VG_BLEND_MODE = 0x1104,
    VG_IMAGE_MODE = 0x1105,
    VG_SCISSOR_RECTS = 0x1106,
    VG_STROKE_LINE_WIDTH = 0x1110,
    VG_STROKE_CAP_STYLE = 0x1111,
    VG_STROKE_JOIN_STYLE = 0x1112,
    VG_STROKE_MITER_LIMIT = 0x1113,
    VG_STROKE_DASH_PATTERN = 0x1114,
    VG_STROKE_DASH_PHASE = 0x1115,
    VG_STROKE_DASH_PHASE_RESET = 0x1116,
    VG_TILE_FILL_COLOR = 0x1120,
    VG_CLEAR_COLOR = 0x1121,
    VG_GLYPH_ORIGIN = 0x1122,
    VG_MASKING = 0x1130,
    VG_SCISSORING = 0x1131,
    VG_PIXEL_LAYOUT = 0x1140,
    VG_SCREEN_LAYOUT = 0x1141,
    VG_FILTER_FORMAT_LINEAR = 0x1150,
    VG_FILTER_FORMAT_PREMULTIPLIED = 0x1151,
    VG_FILTER_CHANNEL_MASK = 0x1152,
    VG_MAX_SCISSOR_RECTS = 0x1160,
    VG_MAX_DASH_COUNT = 0x1161,
    VG_MAX_KERNEL_SIZE = 0x1162,
    VG_MAX_SEPARABLE_KERNEL_SIZE = 0x1163,
    VG_MAX_COLOR_RAMP_STOPS = 0x1164,
    VG_MAX_IMAGE_WIDTH = 0x1165,
    VG_MAX_IMAGE_HEIGHT = 0x1166,
    VG_MAX_IMAGE_PIXELS = 0x1167,
    VG_MAX_IMAGE_BYTES = 0x1168,
    VG_MAX_FLOAT = 0x1169,
    VG_MAX_GAUSSIAN_STD_DEVIATION = 0x116A,
    VG_COLOR_TRANSFORM = 0x1170,
    VG_COLOR_TRANSFORM_VALUES = 0x1171,
    // VG_KRN_separable_blend_modes and VG_KRN_separable_cap_style
    VG_FILL_BLEND_MODE_KRN = 0x1190,
    VG_STROKE_BLEND_MODE_KRN = 0x1191,
    VG_STROKE_START_CAP_STYLE_KRN = 0x1192,
    VG_STROKE_END_CAP_STYLE_KRN = 0x1193
};

enum VGRenderingQuality : VGint {
    VG_RENDERING_QUALITY_NONANTIALIASED = 0x1200,
    VG_RENDERING_QUALITY_FASTER = 0x1201,
    VG_RENDERING_QUALITY_BETTER = 0x1202
};

enum VGPixelLayout : VGint {
    VG_PIXEL_LAYOUT_UNKNOWN = 0x1300,
    VG_PIXEL_LAYOUT_RGB_VERTICAL = 0x1301,
    VG_PIXEL_LAYOUT_BGR_VERTICAL = 0x1302,
    VG_PIXEL_LAYOUT_RGB_HORIZONTAL = 0x1303,
    VG_PIXEL_LAYOUT_BGR_HORIZONTAL = 0x1304
};

enum VGMatrixMode : VGint {
    VG_MATRIX_PATH_USER_TO_SURFACE = 0x1400,
    VG_MATRIX_IMAGE_USER_TO_SURFACE = 0x1401,
    VG_MATRIX_FILL_PAINT_TO_USER = 0x1402,
    VG_MATRIX_STROKE_PAINT_TO_USER = 0x1403,
    VG_MATRIX_GLYPH_USER_TO_SURFACE = 0x1404
};

inline constexpr VGint VG_PATH_FORMAT_STANDARD = 0;

enum VGMaskOperation : VGint {
    VG_CLEAR_MASK = 0x1500,      ///< 0
    VG_FILL_MASK = 0x1501,       ///< 1
    VG_SET_MASK = 0x1502,        ///< the new value
    VG_UNION_MASK = 0x1503,      ///< 1 - (1 - old) (1 - new)
    VG_INTERSECT_MASK = 0x1504,  ///< old new
    VG_SUBTRACT_MASK = 0x1505    ///< old (1 - new)
};

enum VGPathDatatype : VGint {
    VG_PATH_DATATYPE_S_8 = 0,
    VG_PATH_DATATYPE_S_16 = 1,
    VG_PATH_DATATYPE_S_32 = 2,
    VG_PATH_DATATYPE_F = 3
};

enum VGPathCapabilities : VGbitfield {
    VG_PATH_CAPABILITY_APPEND_FROM = 1 << 0,
    VG_PATH_CAPABILITY_APPEND_TO = 1 << 1,
    VG_PATH_CAPABILITY_MODIFY = 1 << 2,
    VG_PATH_CAPABILITY_TRANSFORM_FROM = 1 << 3,
    VG_PATH_CAPABILITY_TRANSFORM_TO = 1 << 4,
    VG_PATH_CAPABILITY_INTERPOLATE_FROM = 1 << 5,
    VG_PATH_CAPABILITY_INTERPOLATE_TO = 1 << 6,
    VG_PATH_CAPABILITY_PATH_LENGTH = 1 << 7,
    VG_PATH_CAPABILITY_POINT_ALONG_PATH = 1 << 8,
    VG_PATH_CAPABILITY_TANGENT_ALONG_PATH = 1 << 9,
    VG_PATH_CAPABILITY_PATH_BOUNDS = 1 << 10,
    VG_PATH_CAPABILITY_PATH_TRANSFORMED_BOUNDS = 1 << 11,
    VG_PATH_CAPABILITY_ALL = (1 << 12) - 1
};

enum VGPathParamType : VGint {
    VG_PATH_FORMAT = 0x1600,
    VG_PATH_DATATYPE = 0x1601,
    VG_PATH_SCALE = 0x1602,
    VG_PATH_BIAS = 0x1603,
    VG_PATH_NUM_SEGMENTS = 0x1604,
    VG_PATH_NUM_COORDS = 0x1605
};

/// Bit 0 of a path command: coordinates relative to the current point.
enum VGPathAbsRel : VGubyte { VG_ABSOLUTE = 0, VG_RELATIVE = 1 };

/// Segment codes; a command byte is a segment or a segment | VG_RELATIVE.
enum VGPathSegment : VGubyte {
    VG_CLOSE_PATH = 0 << 1,
    VG_MOVE_TO = 1 << 1,
    VG_LINE_TO = 2 << 1,
    VG_HLINE_TO = 3 << 1,
    VG_VLINE_TO = 4 << 1,
    VG_QUAD_TO = 5 << 1,
    VG_CUBIC_TO = 6 << 1,
    VG_SQUAD_TO = 7 << 1,
    VG_SCUBIC_TO = 8 << 1,
    VG_SCCWARC_TO = 9 << 1,
    VG_SCWARC_TO = 10 << 1,
    VG_LCCWARC_TO = 11 << 1,
    VG_LCWARC_TO = 12 << 1
};

enum VGCapStyle : VGint { VG_CAP_BUTT = 0x1700, VG_CAP_ROUND = 0x1701, VG_CAP_SQUARE = 0x1702 };

enum VGJoinStyle : VGint { VG_JOIN_MITER = 0x1800, VG_JOIN_ROUND = 0x1801, VG_JOIN_BEVEL = 0x1802 };

enum VGFillRule : VGint { VG_EVEN_ODD = 0x1900, VG_NON_ZERO = 0x1901 };

/// Bits of the paint modes of vgDrawPath and vgSetPaint.
enum VGPaintMode : VGbitfield { VG_STROKE_PATH = 1 << 0, VG_FILL_PATH = 1 << 1 };

enum VGPaintParamType : VGint {
    VG_PAINT_TYPE = 0x1A00,
    VG_PAINT_COLOR = 0x1A01,
    VG_PAINT_COLOR_RAMP_SPREAD_MODE = 0x1A02,
    VG_PAINT_COLOR_RAMP_STOPS = 0x1A03,
    VG_PAINT_LINEAR_GRADIENT = 0x1A04,
    VG_PAINT_RADIAL_GRADIENT = 0x1A05,
    VG_PAINT_PATTERN_TILING_MODE = 0x1A06,
    VG_PAINT_COLOR_RAMP_PREMULTIPLIED = 0x1A07,
    // VG_KRN_conical_gradient: centre x, y, target x, y (where angle 0 points to), repeats
    VG_PAINT_CONICAL_GRADIENT_KRN = 0x1A90,
    // VG_KRN_color_ramp_interpolation
    VG_PAINT_COLOR_RAMP_INTERPOLATION_TYPE_KRN = 0x1A91
};

enum VGPaintType : VGint {
    VG_PAINT_TYPE_COLOR = 0x1B00,
    VG_PAINT_TYPE_LINEAR_GRADIENT = 0x1B01,
    VG_PAINT_TYPE_RADIAL_GRADIENT = 0x1B02,
    VG_PAINT_TYPE_PATTERN = 0x1B03,
    VG_PAINT_TYPE_CONICAL_GRADIENT_KRN = 0x1B90
};

enum VGColorRampSpreadMode : VGint {
    VG_COLOR_RAMP_SPREAD_PAD = 0x1C00,
    VG_COLOR_RAMP_SPREAD_REPEAT = 0x1C01,
    VG_COLOR_RAMP_SPREAD_REFLECT = 0x1C02
};

enum VGColorRampInterpolationTypeKRN : VGint {
    VG_COLOR_RAMP_INTERPOLATION_LINEAR_KRN = 0x1C90,
    VG_COLOR_RAMP_INTERPOLATION_SMOOTH_KRN = 0x1C91
};

enum VGTilingMode : VGint {
    VG_TILE_FILL = 0x1D00,
    VG_TILE_PAD = 0x1D01,
    VG_TILE_REPEAT = 0x1D02,
    VG_TILE_REFLECT = 0x1D03
};

/// Pixel formats: the letters name the fields from the highest bit of a pixel's word down, s and l
/// the sRGB and the linear colour space. Bit 6 of a code puts alpha (or X) first, bit 7 blue.
enum VGImageFormat : VGint {
    VG_sRGBX_8888 = 0x00,
    VG_sRGBA_8888 = 0x01,
    VG_sRGBA_8888_PRE = 0x02,
    VG_sRGB_565 = 0x03,
    VG_sRGBA_5551 = 0x04,
    VG_sRGBA_4444 = 0x05,
    VG_sL_8 = 0x06,
    VG_lRGBX_8888 = 0x07,
    VG_lRGBA_8888 = 0x08,
    VG_lRGBA_8888_PRE = 0x09,
    VG_lL_8 = 0x0A,
    VG_A_8 = 0x0B,
    VG_BW_1 = 0x0C,
    VG_A_1 = 0x0D,
    VG_A_4 = 0x0E,
    VG_sXRGB_8888 = 0x40,
    VG_sARGB_8888 = 0x41,
    VG_sARGB_8888_PRE = 0x42,
    VG_sARGB_1555 = 0x44,
    VG_sARGB_4444 = 0x45,
    VG_lXRGB_8888 = 0x47,
    VG_lARGB_8888 = 0x48,
    VG_lARGB_8888_PRE = 0x49,
    VG_sBGRX_8888 = 0x80,
    VG_sBGRA_8888 = 0x81,
    VG_sBGRA_8888_PRE = 0x82,
    VG_sBGR_565 = 0x83,
    VG_sBGRA_5551 = 0x84,
    VG_sBGRA_4444 = 0x85,
    VG_lBGRX_8888 = 0x87,
    VG_lBGRA_8888 = 0x88,
    VG_lBGRA_8888_PRE = 0x89,
    VG_sXBGR_8888 = 0xC0,
    VG_sABGR_8888 = 0xC1,
    VG_sABGR_8888_PRE = 0xC2,
    VG_sABGR_1555 = 0xC4,
    VG_sABGR_4444 = 0xC5,
    VG_lXBGR_8888 = 0xC7,
    VG_lABGR_8888 = 0xC8,
    VG_lABGR_8888_PRE = 0xC9
};

enum VGImageParamType : VGint {
    VG_IMAGE_FORMAT = 0x1E00,
    VG_IMAGE_WIDTH = 0x1E01,
    VG_IMAGE_HEIGHT = 0x1E02
};

enum VGImageQuality : VGint {
    VG_IMAGE_QUALITY_NONANTIALIASED = 1 << 0,
    VG_IMAGE_QUALITY_FASTER = 1 << 1,
    VG_IMAGE_QUALITY_BETTER = 1 << 2
};

enum VGImageMode : VGint {
    VG_DRAW_IMAGE_NORMAL = 0x1F00,
    VG_DRAW_IMAGE_MULTIPLY = 0x1F01,
    VG_DRAW_IMAGE_STENCIL = 0x1F02
};

enum VGBlendMode : VGint {
    VG_BLEND_SRC = 0x2000,
    VG_BLEND_SRC_OVER = 0x2001,
    VG_BLEND_LAST_KRN = 0x209D  ///< the largest mode the setters accept
};

// Errors

/// Returns the pending error and clears it; VG_NO_CONTEXT_ERROR when nothing is current.
VGErrorCode vgGetError();

// Parameters of the context

void vgSetf(VGint type, VGfloat value);
void vgSeti(VGint type, VGint value);
void vgSetfv(VGint type, VGint count, const VGfloat* values);
void vgSetiv(VGint type, VGint count, const VGint* values);
VGfloat vgGetf(VGint type);
VGint vgGeti(VGint type);
VGint vgGetVectorSize(VGint type);
void vgGetfv(VGint type, VGint count, VGfloat* values);
void vgGetiv(VGint type, VGint count, VGint* values);

// Parameters of objects (paths, paints and images)

void vgSetParameterf(VGHandle object, VGint type, VGfloat value);
void vgSetParameteri(VGHandle object, VGint type, VGint value);
void vgSetParameterfv(VGHandle object, VGint type, VGint count, const VGfloat* values);
void vgSetParameteriv(VGHandle object, VGint type, VGint count, const VGint* values);
VGfloat vgGetParameterf(VGHandle object, VGint type);
VGint vgGetParameteri(VGHandle object, VGint type);
VGint vgGetParameterVectorSize(VGHandle object, VGint type);
void vgGetParameterfv(VGHandle object, VGint type, VGint count, VGfloat* values);
void vgGetParameteriv(VGHandle object, VGint type, VGint count, VGint* values);

// Matrices: nine floats in the order sx, shy, w0, shx, sy, w1, tx, ty, w2

void vgLoadIdentity();
void vgLoadMatrix(const VGfloat* m);
void vgGetMatrix(VGfloat* m);
void vgMultMatrix(const VGfloat* m);

// Clearing

/// Fills a rectangle of surface pixels (y upwards) with the clear colour, clipped to the surface.
void vgClear(VGint x, VGint y, VGint width, VGint height);

// Paths

VGPath vgCreatePath(VGint format, VGint datatype, VGfloat scale, VGfloat bias,
                    VGint segmentCapacityHint, VGint coordCapacityHint, VGbitfield capabilities);
void vgClearPath(VGPath path, VGbitfield capabilities);
void vgDestroyPath(VGPath path);
void vgRemovePathCapabilities(VGPath path, VGbitfield capabilities);
VGbitfield vgGetPathCapabilities(VGPath path);
void vgAppendPath(VGPath destination, VGPath source);
void vgAppendPathData(VGPath destination, VGint segmentCount, const VGubyte* segments,
                      const void* data);
void vgModifyPathCoords(VGPath destination, VGint startIndex, VGint segmentCount, const void* data);
void vgTransformPath(VGPath destination, VGPath source);
VGboolean vgInterpolatePath(VGPath destination, VGPath start, VGPath end, VGfloat amount);
VGfloat vgPathLength(VGPath path, VGint startSegment, VGint segmentCount);
void vgPointAlongPath(VGPath path, VGint startSegment, VGint segmentCount, VGfloat distance,
                      VGfloat* x, VGfloat* y, VGfloat* tangentX, VGfloat* tangentY);

/// The tight box of the path in user space; (0, 0, -1, -1) for a path without segments.
void vgPathBounds(VGPath path, VGfloat* minX, VGfloat* minY, VGfloat* width, VGfloat* height);

/// A box of the path in surface space, under the path-user-to-surface matrix.
void vgPathTransformedBounds(VGPath path, VGfloat* minX, VGfloat* minY, VGfloat* width,
                             VGfloat* height);

void vgDrawPath(VGPath path, VGbitfield paintModes);

// Paints

VGPaint vgCreatePaint();
void vgDestroyPaint(VGPaint paint);
void vgSetPaint(VGPaint paint, VGbitfield paintModes);
VGPaint vgGetPaint(VGint paintMode);
void vgSetColor(VGPaint paint, VGuint rgba);
VGuint vgGetColor(VGPaint paint);

/// Sets the image of a pattern paint; VG_INVALID_HANDLE takes it away, and the paint is its colour.
void vgPaintPattern(VGPaint paint, VGImage pattern);

// Images: pixel (0, 0) is the lower left one, and the first row of a caller's memory is the lowest.
// Rectangles are cut at the borders of both sides; colours are converted between the formats.

/// A new image of zero pixels. `allowedQuality` holds bits of VGImageQuality.
VGImage vgCreateImage(VGint format, VGint width, VGint height, VGbitfield allowedQuality);
void vgDestroyImage(VGImage image);

/// A new image that shows a rectangle of the parent's pixels and keeps them alive.
VGImage vgChildImage(VGImage parent, VGint x, VGint y, VGint width, VGint height);
/// The closest ancestor that has not been destroyed, or the image itself.
VGImage vgGetParent(VGImage image);

/// Draws the image, one unit of image user space to a pixel, under the image matrix. Nothing is
/// drawn when a corner comes to lie behind the viewer.
void vgDrawImage(VGImage image);

/// Fills a rectangle with the clear colour.
void vgClearImage(VGImage image, VGint x, VGint y, VGint width, VGint height);

/// Copies rows of pixels, `dataStride` bytes apart, into the image. Memory of 16- and 32-bit
/// formats must lie on addresses divisible by their size.
void vgImageSubData(VGImage image, const void* data, VGint dataStride, VGint dataFormat, VGint x,
                    VGint y, VGint width, VGint height);
/// Copies pixels of the image out; memory for pixels outside the image stays as it is.
void vgGetImageSubData(VGImage image, void* data, VGint dataStride, VGint dataFormat, VGint x,
                       VGint y, VGint width, VGint height);

/// Copies between images, or within one as if by way of a third. Nothing is dithered.
void vgCopyImage(VGImage destination, VGint dx, VGint dy, VGImage source, VGint sx, VGint sy,
                 VGint width, VGint height, VGboolean dither);

// Pixels of the surface, copied without blending; those that write to it respect the scissor.

void vgSetPixels(VGint dx, VGint dy, VGImage source, VGint sx, VGint sy, VGint width, VGint height);
void vgGetPixels(VGImage destination, VGint dx, VGint dy, VGint sx, VGint sy, VGint width,
                 VGint height);
void vgWritePixels(const void* data, VGint dataStride, VGint dataFormat, VGint dx, VGint dy,
                   VGint width, VGint height);
void vgReadPixels(void* data, VGint dataStride, VGint dataFormat, VGint sx, VGint sy, VGint width,
                  VGint height);
void vgCopyPixels(VGint dx, VGint dy, VGint sx, VGint sy, VGint width, VGint height);

// Masks: a value in 0..1 for each pixel of a surface that was created with one, all 1 at first. A
// draw's coverage is scaled by them while VG_MASKING is on. On a surface without a mask these do
// nothing; they neither respect the scissor nor VG_MASKING.

/// Combines the mask with values that start at the lower left corner of a mask layer or an image:
/// an image's alpha, or its red or grey where it has none. VG_CLEAR_MASK and VG_FILL_MASK take no
/// values.
void vgMask(VGHandle mask, VGint operation, VGint x, VGint y, VGint width, VGint height);

/// Combines the whole mask with the coverage of a path: of its fill, then of its stroke. Drawn with
/// the state of the context, the scissor included, but for paints, blending and masking.
void vgRenderToMask(VGPath path, VGbitfield paintModes, VGint operation);

/// A new mask layer of ones; VG_INVALID_HANDLE on a surface without a mask.
VGMaskLayer vgCreateMaskLayer(VGint width, VGint height);
void vgDestroyMaskLayer(VGMaskLayer layer);

/// Sets a rectangle, which must lie in the layer, to a value.
void vgFillMaskLayer(VGMaskLayer layer, VGint x, VGint y, VGint width, VGint height, VGfloat value);

/// Copies a rectangle of the surface's mask to the layer.
void vgCopyMask(VGMaskLayer layer, VGint dx, VGint dy, VGint sx, VGint sy, VGint width,
                VGint height);
