/** Templates: htm writes what preact shows. */

import htm from "htm";
import { h } from "preact";

export const html = htm.bind(h);
