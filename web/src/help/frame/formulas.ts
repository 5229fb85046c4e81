/// The translator of formulas into MathML, for the frame.

import katex from 'katex';

(window as never as { formulas: typeof katex.renderToString }).formulas = katex.renderToString;
