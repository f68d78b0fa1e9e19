/**
 * @file
 * Quor: SVG Tiny 1.2 documents drawn into premultiplied 32-bit pixels.
 *
 * A session: quorInit, quorSurfaceCreate, quorDocCreate, quorDocDraw, quorSurfacePixels,
 * quorDone.
 *
 * Plain C99. The library keeps one process-wide state without locks: make all calls from one
 * thread, or serialise them. Nothing is thrown and nothing is printed. The one file that is read
 * is the configuration, by quorInit.
 *
 * - Handles: 0 is never valid. The library owns every object until its Destroy function or
 *   quorDone; a handle means nothing afterwards.
 * - Checks are made in a fixed order, the order in which each function names its errors. Unless a
 *   function says otherwise a call that fails changes nothing.
 * - Arrays must not be null, must be aligned to 4 bytes and have as many values as declared.
 * - Floats are made finite on entry: NaN becomes 0, the infinities the largest finite floats.
 */
#ifndef QUOR_QUOR_H
#define QUOR_QUOR_H

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

#if defined(QUOR_BUILD) && defined(__GNUC__)
#define QUOR_API __attribute__((visibility("default")))
#else
#define QUOR_API
#endif

/** @name The version of this header; quorGetString tells that of the library. @{ */
#define QUOR_VERSION_MAJOR 1
#define QUOR_VERSION_MINOR 0
#define QUOR_VERSION_PATCH 0
/** @} */

typedef uint32_t QuorSurface;  /**< The handle of a surface. */
typedef uint32_t QuorDocument; /**< The handle of a document. */

/** No object. */
#define QUOR_INVALID_HANDLE 0u

/** @name Error codes @{ */
#define QUOR_NO_ERROR 0u
/** quorInit was not called, or quorDone was. */
#define QUOR_NOT_INITIALIZED_ERROR 1u
/** The handle is 0, names no object, or names one of the other kind. */
#define QUOR_BAD_HANDLE_ERROR 2u
/** A null or unaligned pointer, a value out of range, a rectangle without area. */
#define QUOR_ILLEGAL_ARGUMENT_ERROR 3u
#define QUOR_OUT_OF_MEMORY_ERROR 4u
/** The text is not well-formed XML. No function returns it yet: see quorDocCreate. */
#define QUOR_PARSER_ERROR 5u
/** `use` elements refer in a circle, nest deeper than 512, or are too many to draw. */
#define QUOR_INVALID_SVG_ERROR 6u
/** The call needs a finished packing while one is being made. */
#define QUOR_STILL_PACKING_ERROR 7u
/** The call needs a packing that was begun. */
#define QUOR_NOT_PACKING_ERROR 8u
/** The engine failed in a way that none of the others describes. */
#define QUOR_UNKNOWN_ERROR 9u
/** @} */

/** @name Names of strings for quorGetString @{ */
#define QUOR_VENDOR 1u
#define QUOR_VERSION 2u
/** @} */

/** @name Rendering qualities, from the fastest to the best @{ */
#define QUOR_RENDERING_QUALITY_NONANTIALIASED 0u
#define QUOR_RENDERING_QUALITY_FASTER 1u
#define QUOR_RENDERING_QUALITY_BETTER 2u
/** @} */

/** @name Where a document's viewport goes in a surface's viewport of another aspect ratio @{ */
#define QUOR_ALIGN_NONE 0u /**< Stretched to fill. */
#define QUOR_ALIGN_XMIN_YMIN 1u
#define QUOR_ALIGN_XMID_YMIN 2u
#define QUOR_ALIGN_XMAX_YMIN 3u
#define QUOR_ALIGN_XMIN_YMID 4u
#define QUOR_ALIGN_XMID_YMID 5u
#define QUOR_ALIGN_XMAX_YMID 6u
#define QUOR_ALIGN_XMIN_YMAX 7u
#define QUOR_ALIGN_XMID_YMAX 8u
#define QUOR_ALIGN_XMAX_YMAX 9u
/** @} */

/** @name How the document's viewport fills the surface's @{ */
#define QUOR_MEET 0u  /**< All of it shows. */
#define QUOR_SLICE 1u /**< It covers all of the surface's viewport. */
/** @} */

/* ---- Library ---- */

/**
 * Starts the library for a screen of the given size in pixels and resolution in dots per inch:
 * what percentages and absolute units of documents refer to. Reads the configuration file,
 * /etc/calvanevg.ini, where there is one. Resets the clear settings, even when it fails, unless
 * the library is initialised.
 * @return QUOR_NO_ERROR, also when the library is already initialised (nothing changes then);
 *         QUOR_ILLEGAL_ARGUMENT_ERROR when a size is 0 or the resolution is not positive;
 *         QUOR_OUT_OF_MEMORY_ERROR
 */
QUOR_API uint32_t quorInit(uint32_t screenWidth, uint32_t screenHeight, float dpi);

/** Destroys every document and surface and ends the library; it may be initialised again. */
QUOR_API void quorDone(void);

/**
 * The string named by QUOR_VENDOR or QUOR_VERSION ("major.minor.patch.build"), "" for any other
 * name. Constant, never null; needs no initialisation.
 */
QUOR_API const char* quorGetString(uint32_t name);

/* ---- Surfaces ---- */

/**
 * Creates a surface of transparent pixels. Sizes are in pixels and clamped to
 * quorSurfaceMaxDimension(). Coordinates reach 2047 pixels: on a side of 2048 the outermost
 * column and the top row take the clear colour only.
 * @return QUOR_INVALID_HANDLE when the library is not initialised, a size is 0 or above 2^31 - 1,
 *         or memory runs out
 */
QUOR_API QuorSurface quorSurfaceCreate(uint32_t width, uint32_t height);

/**
 * Destroys the surface and its pixels.
 * @return QUOR_NO_ERROR, QUOR_NOT_INITIALIZED_ERROR, QUOR_BAD_HANDLE_ERROR
 */
QUOR_API uint32_t quorSurfaceDestroy(QuorSurface surface);

/**
 * Changes the size, clamped as at creation; the pixels become transparent, the viewport the whole
 * surface, the viewport transform the identity. Pointers to the old pixels end.
 * @return QUOR_NO_ERROR, QUOR_NOT_INITIALIZED_ERROR, QUOR_BAD_HANDLE_ERROR;
 *         QUOR_ILLEGAL_ARGUMENT_ERROR when a size is 0; QUOR_OUT_OF_MEMORY_ERROR when memory runs
 *         out or a size is above 2^31 - 1
 */
QUOR_API uint32_t quorSurfaceResize(QuorSurface surface, uint32_t width, uint32_t height);

/** The width in pixels; 0 when the library is not initialised or the handle is bad. */
QUOR_API uint32_t quorSurfaceWidth(QuorSurface surface);
/** The height in pixels; 0 when the library is not initialised or the handle is bad. */
QUOR_API uint32_t quorSurfaceHeight(QuorSurface surface);

/**
 * The pixels: 32-bit words, alpha in bits 24 to 31, then red, green, blue; premultiplied sRGB;
 * rows from the top down, width words each. The memory belongs to the surface and stays valid
 * until it is resized or destroyed.
 * @return null when the library is not initialised or the handle is bad
 */
QUOR_API uint32_t* quorSurfacePixels(QuorSurface surface);

/** The largest side of a surface, 2048 pixels. Needs no initialisation. */
QUOR_API uint32_t quorSurfaceMaxDimension(void);

/**
 * Copies the pixels to width * height words of the caller, which must not overlap the surface's.
 * @param dilateEdgesFix other than 0 gives each transparent pixel inside the border the average
 *        colour of its visible neighbours (alpha stays 0), so that bilinear filtering shows no
 *        dark fringes
 * @return QUOR_NO_ERROR, QUOR_NOT_INITIALIZED_ERROR, QUOR_BAD_HANDLE_ERROR;
 *         QUOR_ILLEGAL_ARGUMENT_ERROR for a bad pointer
 */
QUOR_API uint32_t quorSurfaceCopy(QuorSurface surface, uint32_t* destination,
                                  uint32_t dilateEdgesFix);

/**
 * Stores the part of the surface that documents are fitted into: x, y, width, height in pixels
 * from the top left corner; the whole surface at first.
 * @return QUOR_NO_ERROR, QUOR_NOT_INITIALIZED_ERROR; QUOR_ILLEGAL_ARGUMENT_ERROR for a bad
 *         pointer; QUOR_BAD_HANDLE_ERROR
 */
QUOR_API uint32_t quorSurfaceViewportGet(QuorSurface surface, float viewport[4]);
/**
 * Sets what quorSurfaceViewportGet tells.
 * @return QUOR_NO_ERROR, QUOR_NOT_INITIALIZED_ERROR; QUOR_ILLEGAL_ARGUMENT_ERROR for a bad
 *         pointer; QUOR_BAD_HANDLE_ERROR; QUOR_ILLEGAL_ARGUMENT_ERROR when the width or height is
 *         not above 1.1920929e-7
 */
QUOR_API uint32_t quorSurfaceViewportSet(QuorSurface surface, const float viewport[4]);

/**
 * Stores the motion of the drawing on the surface: a rotation in degrees (clockwise as seen) about
 * a pivot, then a translation. The values are pivot x, pivot y, rotation, translation x,
 * translation y, in pixels; all 0 at first.
 * @return QUOR_NO_ERROR, QUOR_NOT_INITIALIZED_ERROR; QUOR_ILLEGAL_ARGUMENT_ERROR for a bad
 *         pointer; QUOR_BAD_HANDLE_ERROR
 */
QUOR_API uint32_t quorSurfaceViewportTransformGet(QuorSurface surface, float values[5]);
/**
 * Sets what quorSurfaceViewportTransformGet tells.
 * @return QUOR_NO_ERROR, QUOR_NOT_INITIALIZED_ERROR; QUOR_ILLEGAL_ARGUMENT_ERROR for a bad
 *         pointer; QUOR_BAD_HANDLE_ERROR
 */
QUOR_API uint32_t quorSurfaceViewportTransformSet(QuorSurface surface, const float values[5]);

/**
 * The colour that draws clear their surface to, not premultiplied; components are clamped to
 * 0..1. Transparent white at first. Needs no initialisation and outlives quorDone.
 * @return QUOR_NO_ERROR
 */
QUOR_API uint32_t quorClearColor(float red, float green, float blue, float alpha);

/**
 * Whether draws clear their surface first: 0 no, else yes (as at first). Needs no initialisation
 * and outlives quorDone.
 * @return QUOR_NO_ERROR
 */
QUOR_API uint32_t quorClearPerform(uint32_t doClear);

/* ---- Documents ---- */

/**
 * Reads a document from zero-terminated UTF-8 text; the text is copied. Attribute values are never
 * refused: those that cannot be read count as absent.
 * @return QUOR_INVALID_HANDLE when the library is not initialised, the text is null or not
 *         well-formed XML, the outermost element is not `svg`, or memory runs out. The handle is
 *         all there is to tell with, so it cannot say which; the command `quor render FILE` names
 *         the reason, and the line of a fault in the XML.
 */
QUOR_API QuorDocument quorDocCreate(const char* xmlText);

/**
 * Destroys the document. Buffers of a small one, three megabytes at the very most, stay with the
 * library for the next one until quorDone().
 * @return QUOR_NO_ERROR, QUOR_NOT_INITIALIZED_ERROR, QUOR_BAD_HANDLE_ERROR
 */
QUOR_API uint32_t quorDocDestroy(QuorDocument document);

/**
 * The outermost element's width in pixels at the library's resolution.
 * @return -1 when the attribute is missing, relative (a percentage, em, ex) or not a length; 0 when
 *         the library is not initialised or the handle is bad
 */
QUOR_API float quorDocWidth(QuorDocument document);
/** The outermost element's height, as quorDocWidth tells its width. */
QUOR_API float quorDocHeight(QuorDocument document);

/**
 * Stores the part of the document that is shown: x, y, width, height in the document's own units.
 * At first the outermost element's viewBox, else its size, else the screen's. A viewBox without
 * area shows nothing.
 * @return QUOR_NO_ERROR, QUOR_NOT_INITIALIZED_ERROR; QUOR_ILLEGAL_ARGUMENT_ERROR for a bad
 *         pointer; QUOR_BAD_HANDLE_ERROR
 */
QUOR_API uint32_t quorDocViewportGet(QuorDocument document, float viewport[4]);
/**
 * Sets what quorDocViewportGet tells.
 * @return QUOR_NO_ERROR, QUOR_NOT_INITIALIZED_ERROR; QUOR_ILLEGAL_ARGUMENT_ERROR for a bad
 *         pointer; QUOR_BAD_HANDLE_ERROR; QUOR_ILLEGAL_ARGUMENT_ERROR when the width or height is
 *         not above 1.1920929e-7
 */
QUOR_API uint32_t quorDocViewportSet(QuorDocument document, const float viewport[4]);

/**
 * Stores how the shown part is fitted into a surface's viewport: QUOR_ALIGN_..., then QUOR_MEET or
 * QUOR_SLICE. At first the outermost element's preserveAspectRatio.
 * @return QUOR_NO_ERROR, QUOR_NOT_INITIALIZED_ERROR; QUOR_ILLEGAL_ARGUMENT_ERROR for a bad
 *         pointer; QUOR_BAD_HANDLE_ERROR
 */
QUOR_API uint32_t quorDocViewportAlignmentGet(QuorDocument document, uint32_t values[2]);
/**
 * Sets what quorDocViewportAlignmentGet tells.
 * @return QUOR_NO_ERROR, QUOR_NOT_INITIALIZED_ERROR; QUOR_ILLEGAL_ARGUMENT_ERROR for a bad pointer
 *         or a value out of range; QUOR_BAD_HANDLE_ERROR
 */
QUOR_API uint32_t quorDocViewportAlignmentSet(QuorDocument document, const uint32_t values[2]);

/**
 * Clears the surface (unless quorClearPerform turned that off) and draws the document on it. A
 * draw that fails part-way leaves the surface partly drawn.
 *
 * A shape of up to 128 by 128 pixels that comes again at another place, by `use` or in a later
 * draw, is a moved copy of its first coverage: to 1/32 pixel, and at the two lower qualities by
 * whole pixel rows.
 * @param document QUOR_INVALID_HANDLE clears only
 * @param renderingQuality a QUOR_RENDERING_QUALITY_...
 * @return QUOR_NO_ERROR, QUOR_NOT_INITIALIZED_ERROR; QUOR_BAD_HANDLE_ERROR for the document, then
 *         the surface; QUOR_ILLEGAL_ARGUMENT_ERROR for an unknown quality; from the draw
 *         QUOR_OUT_OF_MEMORY_ERROR, QUOR_INVALID_SVG_ERROR, QUOR_UNKNOWN_ERROR
 */
QUOR_API uint32_t quorDocDraw(QuorDocument document, QuorSurface surface,
                              uint32_t renderingQuality);

/**
 * Maps a point of the document's coordinate system to pixels of the surface, measured from its
 * top left corner with y downward, and stores x and y, which are always finite.
 * @param useSurfaceTransform 0 leaves the surface's viewport transform out
 * @return QUOR_NO_ERROR, QUOR_NOT_INITIALIZED_ERROR; QUOR_BAD_HANDLE_ERROR for either handle;
 *         QUOR_ILLEGAL_ARGUMENT_ERROR for a bad pointer
 */
QUOR_API uint32_t quorPointMap(QuorDocument document, QuorSurface surface, float x, float y,
                               uint32_t useSurfaceTransform, float result[2]);

/* ---- Atlas packing ---- */

/*
 * Places the elements of documents in as few and as small bins as it can, and draws the bins:
 * quorPackingBegin, quorPackingAdd for each document, quorPackingEnd; then for each bin
 * quorPackingBinInfo, a surface of that size, quorPackingDraw and quorSurfaceCopy. Documents may be
 * drawn and surfaces used meanwhile.
 *
 * A document destroyed before quorPackingEnd takes its elements along. Destroyed later, its
 * rectangles cannot be drawn any more and their ids read "".
 */

/**
 * A rectangle is the box of the pixels that an element paints at the best quality, alone and at its
 * scale: of its fill where that shows and of its stroke as drawn, with caps, joins and dashes; of
 * all it holds for a container. What paints no pixel has no rectangle: fill "none" without a
 * stroke, an opacity or a width of 0, a gradient without stops and with no fallback, what is
 * hidden.
 *
 * Containers are `g`, nested `svg` and every element that this library does not know and that holds
 * others, such as `a` and `switch`: what is inside them is drawn, so it is packed too.
 */

/** A placed element; 4-byte aligned. */
typedef struct QuorPackedRect {
    const char* id;        /**< its id or xml:id, "" when it has none; owned by the document */
    QuorDocument document; /**< the handle given to quorPackingAdd */
    uint32_t element;      /**< counted from 0 in collecting order over all quorPackingAdd calls */
    int32_t originX;       /**< left side of the element in scaled document pixels */
    int32_t originY;       /**< top side, y downward */
    uint32_t x, y;         /**< top left corner in the bin, y downward, border not included */
    uint32_t width;        /**< pixels */
    uint32_t height;       /**< pixels */
    float scale;           /**< document units to pixels */
} QuorPackedRect;

/**
 * Starts a packing and forgets the result of the last one.
 * @param maxDimension the most pixels that a bin has on a side
 * @param border pixels that stay free between elements and along the edges
 * @param pow2Bins other than 0 makes the sides powers of two
 * @param scale document units to pixels
 * @return QUOR_NO_ERROR, QUOR_NOT_INITIALIZED_ERROR; QUOR_STILL_PACKING_ERROR when already packing;
 *         QUOR_ILLEGAL_ARGUMENT_ERROR when maxDimension is 0 or above quorSurfaceMaxDimension(),
 *         2 * border reaches maxDimension, pow2Bins meets a maxDimension that is no power of two,
 *         or the scale is not above 0; QUOR_OUT_OF_MEMORY_ERROR
 */
QUOR_API uint32_t quorPackingBegin(uint32_t maxDimension, uint32_t border, uint32_t pow2Bins,
                                   float scale);

/**
 * Collects elements of a document at quorPackingBegin's scale times this one. Elements that paint
 * nothing are passed over. When it fails nothing of the document is taken.
 * @param explodeGroups 0: the children of the outermost element, each with all that is in it; else
 *        containers are opened, down to shapes and `use` elements
 * @param info receives how many elements were taken and how many were left out because they are
 *        larger than maxDimension without its two borders
 * @return QUOR_NO_ERROR, QUOR_NOT_INITIALIZED_ERROR; QUOR_NOT_PACKING_ERROR when not packing;
 *         QUOR_BAD_HANDLE_ERROR; QUOR_ILLEGAL_ARGUMENT_ERROR for a bad pointer or a scale not above
 *         0; from measuring QUOR_OUT_OF_MEMORY_ERROR, QUOR_INVALID_SVG_ERROR, QUOR_UNKNOWN_ERROR
 */
QUOR_API uint32_t quorPackingAdd(QuorDocument document, uint32_t explodeGroups, float scale,
                                 uint32_t info[2]);

/**
 * Ends the packing in any case, also when it fails.
 * @param performPacking 0 drops what was collected; else the elements are packed, the same way on
 *        every machine
 * @return QUOR_NO_ERROR (with 0 bins when nothing was collected), QUOR_NOT_INITIALIZED_ERROR;
 *         QUOR_NOT_PACKING_ERROR when not packing; QUOR_OUT_OF_MEMORY_ERROR (there is no result
 *         then)
 */
QUOR_API uint32_t quorPackingEnd(uint32_t performPacking);

/** How many bins there are; 0 when not initialised, while packing or without a result. */
QUOR_API uint32_t quorPackingBinsCount(void);

/**
 * Stores a bin's width and height in pixels and its number of rectangles.
 * @return QUOR_NO_ERROR, QUOR_NOT_INITIALIZED_ERROR; QUOR_STILL_PACKING_ERROR while packing;
 *         QUOR_ILLEGAL_ARGUMENT_ERROR for a bad pointer, no result, or a bin out of range
 */
QUOR_API uint32_t quorPackingBinInfo(uint32_t bin, uint32_t info[3]);

/**
 * A bin's rectangles in collecting order; null where quorPackingBinInfo would fail. Valid until the
 * next quorPackingBegin or quorDone.
 */
QUOR_API const QuorPackedRect* quorPackingBinRects(uint32_t bin);

/**
 * Clears the surface as quorDocDraw does and draws rectsCount rectangles of a bin, from firstRect
 * on, each at its place in the surface's pixels: the surface's viewport and viewport transform are
 * not used. An element has the style and the transforms of all that it is inside of. All of a call
 * together visit as many targets of `use` elements as one quorDocDraw may, else the result is
 * QUOR_INVALID_SVG_ERROR.
 * @param renderingQuality a QUOR_RENDERING_QUALITY_...
 * @return QUOR_NO_ERROR, QUOR_NOT_INITIALIZED_ERROR; QUOR_STILL_PACKING_ERROR while packing;
 *         QUOR_ILLEGAL_ARGUMENT_ERROR for no result, a bin or rectangles out of range;
 *         QUOR_BAD_HANDLE_ERROR for a bad surface; QUOR_ILLEGAL_ARGUMENT_ERROR for an unknown
 *         quality; QUOR_BAD_HANDLE_ERROR when a document of the rectangles no longer exists; from
 *         the draw QUOR_OUT_OF_MEMORY_ERROR, QUOR_INVALID_SVG_ERROR, QUOR_UNKNOWN_ERROR
 */
QUOR_API uint32_t quorPackingDraw(uint32_t bin, uint32_t firstRect, uint32_t rectsCount,
                                  QuorSurface surface, uint32_t renderingQuality);

#ifdef __cplusplus
}
#endif

#endif /* QUOR_QUOR_H */
