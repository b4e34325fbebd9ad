"""What a screenshot shows, as arrays."""

import numpy

BLACK = (0, 0, 0)


def matches(image, colour):
    """A mask, rows by columns, of the pixels that have exactly this colour."""
    return (numpy.asarray(image) == numpy.array(colour, dtype=numpy.uint8)).all(axis=2)


def extent(mask):
    """(left, top, right, bottom) of what is set, right and bottom exclusive; None when empty."""
    rows, columns = mask.any(axis=1).nonzero()[0], mask.any(axis=0).nonzero()[0]
    if not len(rows):
        return None
    return int(columns[0]), int(rows[0]), int(columns[-1]) + 1, int(rows[-1]) + 1


def region_mask(rectangles, width, height):
    """A mask of the pixels that a list of rectangles covers."""
    mask = numpy.zeros((height, width), dtype=bool)
    for rect in rectangles:
        mask[max(0, rect.y) : rect.bottom, max(0, rect.x) : rect.right] = True
    return mask
