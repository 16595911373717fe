# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
"""BGP's data types as a router keeps them: text to values, values to text and fields, one at a time or in columns.

    >>> import bgpdt
    >>> rd = bgpdt.VRFRD("64496:1")
    >>> rd.administrator, rd.hex()
    (64496, '0000fbf00000000100000001')
"""
from bgpdt._bgpdt import *  # noqa: F403
from bgpdt._bgpdt import __version__ as __version__
