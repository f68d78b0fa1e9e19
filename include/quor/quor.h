/*
 * Quor: SVG Tiny 1.2 documents drawn into premultiplied 32-bit pixels.
 *
 * A session: quorInit, quorSurfaceCreate, quorDocCreate, quorDocDraw, quorSurfacePixels,
 * quorDone.
 *
 * Plain C99. The library keeps one process-wide state without locks: make all calls from one
 * thread, or serialise them. Nothing is thrown and nothing is printed.
 *
 * Handles   0 is never valid. The library owns every object until its Destroy function or
 *           quorDone; a handle means nothing afterwards.
 * Checks    are made in a fixed order: initialised (1), handles (2), pointers and ranges (3). The
 *           getters and setters of viewports, viewport transforms and alignments test their array
 *           before the handle.
 * Arrays    must not be null and must be aligned to 4 bytes.
 * Floats    are made finite on entry: NaN becomes 0, the infinities the largest finite floats.
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

/* No object. */
#define QUOR_INVALID_HANDLE 0u

/* Error codes. */
#define QUOR_NO_ERROR 0u
/* quorInit was not called, or quorDone was. */
#define QUOR_NOT_INITIALIZED_ERROR 1u
/* The handle is 0, names no object, or names one of the other kind. */
#define QUOR_BAD_HANDLE_ERROR 2u
/* A null or unaligned pointer, a value out of range, a rectangle without area. */
#define QUOR_ILLEGAL_ARGUMENT_ERROR 3u
#define QUOR_OUT_OF_MEMORY_ERROR 4u
/* The text is not well-formed XML. */
#define QUOR_PARSER_ERROR 5u
/* The outermost element is not `svg`, or `use` elements refer in a circle or nest too deep. */
#define QUOR_INVALID_SVG_ERROR 6u
/* The call needs a finished packing while one is being made. */
#define QUOR_STILL_PACKING_ERROR 7u
/* The call needs a packing that was begun. */
#define QUOR_NOT_PACKING_ERROR 8u
#define QUOR_UNKNOWN_ERROR 9u

/* Names of strings for quorGetString. */
#define QUOR_VENDOR 1u
#define QUOR_VERSION 2u

/* Rendering qualities for quorDocDraw, from the fastest to the best. */
#define QUOR_RENDERING_QUALITY_NONANTIALIASED 0u
#define QUOR_RENDERING_QUALITY_FASTER 1u
#define QUOR_RENDERING_QUALITY_BETTER 2u

/* Where a document's viewport goes in a surface's viewport of another aspect ratio. */
#define QUOR_ALIGN_NONE 0u /* stretched to fill */
#define QUOR_ALIGN_XMIN_YMIN 1u
#define QUOR_ALIGN_XMID_YMIN 2u
#define QUOR_ALIGN_XMAX_YMIN 3u
#define QUOR_ALIGN_XMIN_YMID 4u
#define QUOR_ALIGN_XMID_YMID 5u
#define QUOR_ALIGN_XMAX_YMID 6u
#define QUOR_ALIGN_XMIN_YMAX 7u
#define QUOR_ALIGN_XMID_YMAX 8u
#define QUOR_ALIGN_XMAX_YMAX 9u

/* Whether all of the document's viewport shows, or it covers all of the surface's viewport. */
#define QUOR_MEET 0u
#define QUOR_SLICE 1u

/* ---- Library ---- */

/*
 * Starts the library for a screen of the given size in pixels and resolution in dots per inch:
 * what percentages and absolute units of documents refer to.
 * 0, also when the library is already initialised (nothing changes then); 3 when a size is 0 or
 * the resolution is not positive; 4. Resets the clear settings, even when it fails, unless the
 * library is already initialised.
 */
QUOR_API uint32_t quorInit(uint32_t screenWidth, uint32_t screenHeight, float dpi);

/* Destroys every document and surface and ends the library; it may be initialised again. */
QUOR_API void quorDone(void);

/*
 * The string named by QUOR_VENDOR or QUOR_VERSION, "" for any other name. Constant, never null;
 * needs no initialisation.
 */
QUOR_API const char* quorGetString(uint32_t name);

/* ---- Surfaces ---- */

/*
 * Creates a surface of transparent pixels. Sizes are in pixels and clamped to
 * quorSurfaceMaxDimension(). Coordinates reach 2047 pixels: on a side of 2048 the outermost
 * column and the top row take the clear colour only.
 * QUOR_INVALID_HANDLE when the library is not initialised, a size is 0 or above 2^31 - 1, or
 * memory runs out.
 */
QUOR_API uint32_t quorSurfaceCreate(uint32_t width, uint32_t height);

/* Destroys the surface and its pixels. 0, 1, 2. */
QUOR_API uint32_t quorSurfaceDestroy(uint32_t surface);

/*
 * Changes the size, clamped as at creation; the pixels become transparent, the viewport the whole
 * surface, the viewport transform the identity. Pointers to the old pixels end.
 * 0, 1, 2, 3 when a size is 0, 4 (nothing changes) when memory runs out or a size is above
 * 2^31 - 1.
 */
QUOR_API uint32_t quorSurfaceResize(uint32_t surface, uint32_t width, uint32_t height);

/* The size in pixels; 0 when the library is not initialised or the handle is bad. */
QUOR_API uint32_t quorSurfaceWidth(uint32_t surface);
QUOR_API uint32_t quorSurfaceHeight(uint32_t surface);

/*
 * The pixels: 32-bit words, alpha in bits 24 to 31, then red, green, blue; premultiplied sRGB;
 * rows from the top down, width words each. The memory belongs to the surface and stays valid
 * until it is resized or destroyed. Null when the library is not initialised or the handle is bad.
 */
QUOR_API uint32_t* quorSurfacePixels(uint32_t surface);

/* The largest side of a surface, 2048 pixels. Needs no initialisation. */
QUOR_API uint32_t quorSurfaceMaxDimension(void);

/*
 * Copies the pixels to width * height words of the caller, which must not overlap the surface's.
 * A dilateEdgesFix other than 0 gives each transparent pixel inside the border the average colour
 * of its visible neighbours (alpha stays 0), so that bilinear filtering shows no dark fringes.
 * 0, 1, 2, 3 for a bad pointer.
 */
QUOR_API uint32_t quorSurfaceCopy(uint32_t surface, uint32_t* destination, uint32_t dilateEdgesFix);

/*
 * The part of the surface that documents are fitted into: x, y, width, height in pixels from the
 * top left corner; the whole surface at first. 0, 1, 3 for a bad pointer, 2; Set: 3 when the
 * width or height is not above 1.1920929e-7 (nothing changes).
 */
QUOR_API uint32_t quorSurfaceViewportGet(uint32_t surface, float* viewport);
QUOR_API uint32_t quorSurfaceViewportSet(uint32_t surface, const float* viewport);

/*
 * A motion of the drawing on the surface: a rotation in degrees (clockwise as seen) about a pivot,
 * then a translation. Five floats: pivot x, pivot y, rotation, translation x, translation y, in
 * pixels; all 0 at first. 0, 1, 3 for a bad pointer, 2.
 */
QUOR_API uint32_t quorSurfaceViewportTransformGet(uint32_t surface, float* values);
QUOR_API uint32_t quorSurfaceViewportTransformSet(uint32_t surface, const float* values);

/*
 * The colour that draws clear their surface to, not premultiplied; components are clamped to
 * 0..1. Transparent white at first. Always 0; needs no initialisation and outlives quorDone.
 */
QUOR_API uint32_t quorClearColor(float red, float green, float blue, float alpha);

/* Whether draws clear their surface first: 0 no, else yes (as at first). As quorClearColor. */
QUOR_API uint32_t quorClearPerform(uint32_t doClear);

/* ---- Documents ---- */

/*
 * Reads a document from zero-terminated UTF-8 text; the text is copied.
 * QUOR_INVALID_HANDLE when the library is not initialised, the text is null or not well-formed,
 * the outermost element is not `svg`, or memory runs out.
 */
QUOR_API uint32_t quorDocCreate(const char* xmlText);

/*
 * Destroys the document. Buffers of a small one, three megabytes at the very most, stay with the
 * library for the next one until quorDone(). 0, 1, 2.
 */
QUOR_API uint32_t quorDocDestroy(uint32_t document);

/*
 * The outermost element's width or height in pixels at the library's resolution; -1 when the
 * attribute is missing, relative (a percentage, em, ex) or not a length; 0 when the library is not
 * initialised or the handle is bad.
 */
QUOR_API float quorDocWidth(uint32_t document);
QUOR_API float quorDocHeight(uint32_t document);

/*
 * The part of the document that is shown: x, y, width, height in the document's own units. At
 * first the outermost element's viewBox, else its size, else the screen's. A viewBox without area
 * shows nothing. 0, 1, 3 for a bad pointer, 2; Set: 3 when the width or height is not above
 * 1.1920929e-7 (nothing changes).
 */
QUOR_API uint32_t quorDocViewportGet(uint32_t document, float* viewport);
QUOR_API uint32_t quorDocViewportSet(uint32_t document, const float* viewport);

/*
 * How the shown part is fitted into a surface's viewport: QUOR_ALIGN_..., then QUOR_MEET or
 * QUOR_SLICE. At first the outermost element's preserveAspectRatio. 0, 1, 3 for a bad pointer (or
 * a value out of range), 2.
 */
QUOR_API uint32_t quorDocViewportAlignmentGet(uint32_t document, uint32_t* values);
QUOR_API uint32_t quorDocViewportAlignmentSet(uint32_t document, const uint32_t* values);

/*
 * Clears the surface (unless quorClearPerform turned that off) and draws the document on it at a
 * QUOR_RENDERING_QUALITY_.... Document 0 clears only. 0, 1, 2, 3 for an unknown quality, 4, 6, 9;
 * a draw that fails part-way leaves the surface partly drawn.
 * A shape of up to 128 by 128 pixels that comes again at another place, by `use` or in a later
 * draw, is a moved copy of its first coverage: to 1/32 pixel, and at the two lower qualities by
 * whole pixel rows.
 */
QUOR_API uint32_t quorDocDraw(uint32_t document, uint32_t surface, uint32_t renderingQuality);

/*
 * Maps a point of the document's coordinate system to pixels of the surface, measured from its
 * top left corner with y downward, and stores x and y in `result` (always finite).
 * useSurfaceTransform: 0 leaves the surface's viewport transform out. 0, 1, 2, 3.
 */
QUOR_API uint32_t quorPointMap(uint32_t document, uint32_t surface, float x, float y,
                               uint32_t useSurfaceTransform, float* result);

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

/*
 * A rectangle is the box of the pixels that an element paints at the best quality, alone and at its
 * scale: of its fill where that shows and of its stroke as drawn, with caps, joins and dashes; of
 * all it holds for a container. What paints no pixel has no rectangle: fill "none" without a
 * stroke, an opacity or a width of 0, a gradient without stops and with no fallback, what is
 * hidden.
 *
 * Containers are `g`, nested `svg` and every element that this library does not know and that holds
 * others, such as `a` and `switch`: what is inside them is drawn, so it is packed too.
 */

/* A placed element; 4-byte aligned. */
typedef struct QuorPackedRect {
    const char* id;    /* its id or xml:id, "" when it has none; owned by the document */
    uint32_t document; /* the handle given to quorPackingAdd */
    uint32_t element;  /* counted from 0 in collecting order over all quorPackingAdd calls */
    int32_t originX;   /* top left corner of the element in scaled document pixels, */
    int32_t originY;   /* y downward */
    uint32_t x, y;     /* top left corner in the bin, y downward, border not included */
    uint32_t width;    /* pixels */
    uint32_t height;   /* pixels */
    float scale;       /* document units to pixels */
} QuorPackedRect;

/*
 * Starts a packing and forgets the result of the last one. Bins have at most maxDimension pixels a
 * side; `border` pixels stay free between elements and along the edges; pow2Bins other than 0
 * makes the sides powers of two; `scale` maps document units to pixels.
 * 0, 1, 7 when already packing, 3 when maxDimension is 0 or above quorSurfaceMaxDimension(),
 * 2 * border reaches maxDimension, the scale is not above 0, or pow2Bins meets a maxDimension that
 * is no power of two; 4.
 */
QUOR_API uint32_t quorPackingBegin(uint32_t maxDimension, uint32_t border, uint32_t pow2Bins,
                                   float scale);

/*
 * Collects elements of a document at quorPackingBegin's scale times this one. explodeGroups 0: the
 * children of the outermost element, each with all that is in it; else containers are opened, down
 * to shapes and `use` elements. Elements that paint nothing are passed over.
 * Stores in `info` (2 values) how many elements were taken and how many were left out because they
 * are larger than maxDimension without its two borders.
 * 0, 1, 8 when not packing, 2, 3 for a bad pointer or a scale not above 0; 4, 6, 9 (nothing of the
 * document is taken then).
 */
QUOR_API uint32_t quorPackingAdd(uint32_t document, uint32_t explodeGroups, float scale,
                                 uint32_t* info);

/*
 * Ends the packing in any case. performPacking 0 drops what was collected; else the elements are
 * packed, the same way on every machine. 0 (with 0 bins when nothing was collected), 1, 8 when not
 * packing, 4 (there is no result then).
 */
QUOR_API uint32_t quorPackingEnd(uint32_t performPacking);

/* How many bins there are; 0 when not initialised, while packing or without a result. */
QUOR_API uint32_t quorPackingBinsCount(void);

/*
 * Stores a bin's width and height in pixels and its number of rectangles in `info` (3 values).
 * 0, 1, 7 while packing, 3 for a bad pointer, no result, or a bin out of range.
 */
QUOR_API uint32_t quorPackingBinInfo(uint32_t bin, uint32_t* info);

/*
 * A bin's rectangles in collecting order; null where quorPackingBinInfo would fail. Valid until the
 * next quorPackingBegin or quorDone.
 */
QUOR_API const QuorPackedRect* quorPackingBinRects(uint32_t bin);

/*
 * Clears the surface as quorDocDraw does and draws rectsCount rectangles of a bin, from firstRect
 * on, each at its place in the surface's pixels: the surface's viewport and viewport transform are
 * not used. An element has the style and the transforms of all that it is inside of. All of a call
 * together visit as many targets of `use` elements as one quorDocDraw may, else the result is 6.
 * 0, 1, 7 while packing, 3 for no result, a bin or rectangles out of range, 2 for a bad surface, 3
 * for an unknown quality, 2 when a document of the rectangles no longer exists; 4, 6, 9.
 */
QUOR_API uint32_t quorPackingDraw(uint32_t bin, uint32_t firstRect, uint32_t rectsCount,
                                  uint32_t surface, uint32_t renderingQuality);

#ifdef __cplusplus
}
#endif

#endif /* QUOR_QUOR_H */
