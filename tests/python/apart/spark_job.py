# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
"""spark_job.py ROWS EXECUTORS FOLDER: converts so many texts on a local cluster, each executor of one core, and writes rows
and values there; prints what it took and what there was, as JSON."""
import json
import os
import sys
import time

import pyspark

os.environ |= {"PYSPARK_PYTHON": sys.executable, "SPARK_HOME": os.path.dirname(pyspark.__file__)}

from pyspark.sql import SparkSession  # noqa: E402
from pyspark.sql import functions as F  # noqa: E402

import bgpdt.spark  # noqa: E402

TEXTS = "concat(if(id % 10007 = 0, 'x', ''), 64496 + id % 16, ':', id)"  # every 10007th is refused


def main():
    rows, executors, folder = int(sys.argv[1]), int(sys.argv[2]), sys.argv[3]
    spark = (SparkSession.builder.master(f"local-cluster[{executors},1,1024]")
             .config("spark.ui.enabled", "false").config("spark.driver.host", "127.0.0.1")
             .config("spark.sql.execution.arrow.maxRecordsPerBatch", "65536").getOrCreate())
    spark.sparkContext.setLogLevel("ERROR")
    texts = spark.range(0, rows, 1, 8).select("id", F.expr(TEXTS).alias("rd"))
    bgpdt.spark.with_values(spark.range(1000).select(F.lit("64496:1").alias("rd")), "rd", "VRFRD").count()  # all is started
    began = time.monotonic()
    values = bgpdt.spark.with_values(texts, "rd", "VRFRD")
    values.select("id", F.lower(F.hex("value")).alias("hex"), "reason").write.parquet(folder)
    seconds = time.monotonic() - began
    began = time.monotonic()
    texts.write.parquet(folder + "-texts")
    without = time.monotonic() - began
    struct = texts.select(bgpdt.spark.value_of("VRFRD")("rd").alias("v")).where("id < 100000")
    counts = struct.agg(F.count("v.value"), F.count("v.reason")).collect()[0]
    print(json.dumps({"seconds": seconds, "without": without, "column": list(counts)}))


main()
