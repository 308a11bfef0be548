#!/usr/bin/python3
"""Prints the text of one entity as ezdxf reads it, \\U+XXXX resolved.

Usage: ezdxf_text.py FILE HANDLE   (TEXT, MTEXT, ATTRIB, ATTDEF)
An independent check of the engine's code-page handling.
"""
import sys

import ezdxf
from ezdxf.lldxf.encoding import decode_dxf_unicode

doc = ezdxf.readfile(sys.argv[1])
entity = doc.entitydb[sys.argv[2].upper()]
sys.stdout.write(decode_dxf_unicode(entity.dxf.text if entity.dxftype() != "MTEXT"
                                    else entity.text))
