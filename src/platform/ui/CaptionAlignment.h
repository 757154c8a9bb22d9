#pragma once

class QWidget;

// Gives all captions of a page (labels with a buddy) the width of the widest one, so that the fields of its separate
// form layouts line up.
void alignCaptions(QWidget& page);
