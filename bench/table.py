#!/usr/bin/env python3
"""Runs the benchmark program and prints a Markdown table: each operation of
the library, its throughput, the standard peer it ran beside in the same run,
and the ratio (above 1: the library is faster).

usage: bench/table.py PATH/TO/vq0300-bench [extra benchmark flags]

With extra flags (CI passes --benchmark_min_time=0.01) the heading says that
the run was a short smoke run, not a measurement for the README.
"""
import datetime
import json
import os
import platform
import subprocess
import sys
import tempfile

# (operation, library benchmark, peer, peer benchmark); the peer may be None.
ROWS = [
    ("LRNG::GetRandom", "BM_LRNG_GetRandom", "std::mt19937", "BM_std_mt19937"),
    ("get_crc_32, 4 KiB", "BM_get_crc_32/4096", "slicing-by-8", "BM_slicing8_crc_32/4096"),
    ("get_crc_32, 64 KiB", "BM_get_crc_32/65536", "slicing-by-8", "BM_slicing8_crc_32/65536"),
    ("get_crc_32, 64 KiB", "BM_get_crc_32/65536", "byte table", "BM_byte_table_crc_32/65536"),
    ("get_crc_32, 16 MiB", "BM_get_crc_32/16777216", "slicing-by-8", "BM_slicing8_crc_32/16777216"),
    ("get_crc_32 as cksum, 256 MiB", "BM_get_crc_32_cksum_bytes/iterations:3/real_time",
     "cksum command, file in page cache", "BM_cksum_command/iterations:3/real_time"),
    ("CRC-32 portable path, 64 KiB", "BM_crc_32_path/0/65536", "slicing-by-8",
     "BM_slicing8_crc_32/65536"),
    ("CRC-32 PCLMULQDQ path, 64 KiB", "BM_crc_32_path/1/65536", "slicing-by-8",
     "BM_slicing8_crc_32/65536"),
    ("CRC-32 VPCLMULQDQ path, 64 KiB", "BM_crc_32_path/2/65536", "slicing-by-8",
     "BM_slicing8_crc_32/65536"),
    ("get_crc_32, 1 byte", "BM_get_crc_32/1", "byte table, inlined", "BM_byte_table_crc_32/1"),
    ("get_crc_32, 16 bytes", "BM_get_crc_32/16", "byte table, inlined", "BM_byte_table_crc_32/16"),
    ("get_crc_32, 64 bytes", "BM_get_crc_32/64", "byte table, inlined", "BM_byte_table_crc_32/64"),
    ("get_crc_16, 64 KiB", "BM_get_crc_16/65536", "byte table", "BM_byte_table_crc_16/65536"),
    ("get_crc_16 reverse, 64 KiB", "BM_get_crc_16_reverse/65536", "byte table",
     "BM_byte_table_crc_16/65536"),
    ("get_crc_16, 64 bytes", "BM_get_crc_16/64", "byte table, inlined", "BM_byte_table_crc_16/64"),
    ("get_crc_ccitt, 64 KiB by byte", "BM_get_crc_ccitt/65536", "byte-table step by pointer",
     "BM_byte_table_ccitt_by_pointer/65536"),
    ("RBTree::Insert, 1M keys", "RBTreeInsert/1000000", "std::set", "StdSetInsert/1000000"),
    ("RBTree::Insert, 1M keys", "RBTreeInsert/1000000", "std::map", "StdMapInsert/1000000"),
    ("RBTree::Search, 1M keys", "RBTreeSearch/1000000", "std::set", "StdSetSearch/1000000"),
    ("RBTree::Search, 1M keys", "RBTreeSearch/1000000", "std::map", "StdMapSearch/1000000"),
    ("RBTree::Delete, 1M keys", "RBTreeDelete/1000000", "std::set", "StdSetDelete/1000000"),
    ("RBTree::Delete, 1M keys", "RBTreeDelete/1000000", "std::map", "StdMapDelete/1000000"),
    ("LByteBuffer::WriteData(char*), 100 MB", "BM_LByteBuffer_WriteText", "std::string append",
     "BM_StdString_Append"),
    ("LByteBuffer::ReadData, 100 MB by block", "BM_LByteBuffer_ReadByIndex", None, None),
    ("LCirByteBuffer::WriteData, 100 MB", "BM_LCirByteBuffer_Write/65536", None, None),
    ("LHash::getKey, 10 keys", "LHashGetKey/10", None, None),
    ("LHash::getKey, 1,000 keys", "LHashGetKey/1000", None, None),
    ("LHash::getKey, 100,000 keys", "LHashGetKey/100000", None, None),
    ("ErrorHandler::Initialize, 100,000 definitions", "BM_InitializeWholeFile", None, None),
]


def processor():
    """The processor's model name and the instruction sets the CRC paths use."""
    try:
        info = open("/proc/cpuinfo").read()
    except OSError:
        return "processor unknown"
    name = next((line.split(":", 1)[1].strip() for line in info.splitlines()
                 if line.startswith("model name")), "processor unknown")
    flags = next((line.split(":", 1)[1].split() for line in info.splitlines()
                  if line.startswith("flags")), [])
    have = [f for f in ("pclmulqdq", "vpclmulqdq", "avx512bw") if f in flags]
    return f"{name}, with {', '.join(have)}" if have else name


def rate(result):
    """Throughput of one benchmark as (per second, unit)."""
    if "bytes_per_second" in result:
        return result["bytes_per_second"], "B/s"
    if "items_per_second" in result:
        return result["items_per_second"], "items/s"
    seconds = result["real_time"] * {"ns": 1e-9, "us": 1e-6, "ms": 1e-3, "s": 1.0}[result["time_unit"]]
    return 1.0 / seconds, "runs/s"


def show(value, unit):
    for scale, prefix in ((1e9, "G"), (1e6, "M"), (1e3, "k")):
        if value >= scale:
            joint = "" if unit == "B/s" else " "  # "MB/s", but "M items/s"
            return f"{value / scale:.1f} {prefix}{joint}{unit}"
    return f"{value:.1f} {unit}"


def main():
    if len(sys.argv) < 2:
        sys.exit(__doc__)
    with tempfile.NamedTemporaryFile(suffix=".json") as out:
        subprocess.run([sys.argv[1], "--benchmark_out=" + out.name, "--benchmark_out_format=json",
                        *sys.argv[2:]], check=True, stdout=subprocess.DEVNULL)
        data = json.load(open(out.name))
        # A benchmark that skipped itself (SkipWithError) counts as absent.
        results = {r["name"]: r for r in data["benchmarks"] if not r.get("error_occurred")}
    flags = " ".join(sys.argv[2:])
    how = (f"one short smoke run ({flags}), release build: it shows that every benchmark runs; "
           "its figures are not comparable with the README's table" if flags
           else "one run, release build")
    print(f"Measured {datetime.date.today()} on {platform.machine()} ({processor()}), "
          f"{os.cpu_count()} cores, {platform.platform()}; {how}.\n")
    print("| Operation | Throughput | Peer in the same run | Peer throughput | Ratio |")
    print("|---|---|---|---|---|")
    for operation, name, peer, peer_name in ROWS:
        if name not in results:
            continue
        value, unit = rate(results[name])
        if peer and peer_name in results:
            peer_value, _ = rate(results[peer_name])
            print(f"| {operation} | {show(value, unit)} | {peer} | {show(peer_value, unit)} | "
                  f"{value / peer_value:.2f} |")
        else:
            print(f"| {operation} | {show(value, unit)} | none | | |")


if __name__ == "__main__":
    main()
