# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
from collections.abc import Callable, Sequence

from pyspark.sql import Column, DataFrame

def with_values(
    frame: DataFrame,
    column: str,
    type: str,
    *,
    value: str = "value",
    reason: str = "reason",
    fields: Sequence[str] = (),
    mode: int | None = None,
) -> DataFrame: ...
def value_of(type: str, mode: int | None = None) -> Callable[[Column | str], Column]: ...
