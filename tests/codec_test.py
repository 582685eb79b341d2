#!/usr/bin/env python3
"""Checks that the codec and other implementations read each other: codec_test.py path/to/codec_server"""

import gzip
import random
import subprocess
import sys
import zlib

FUNCTIONS = ["deflate", "inflate", "zlib_compress", "zlib_decompress", "gzip_compress", "gzip_decompress"]
MALFORMED = -1


class Codec:
    def __init__(self, server):
        self.process = subprocess.Popen([server], stdin=subprocess.PIPE, stdout=subprocess.PIPE)

    def run(self, function, data, capacity):
        self.process.stdin.write(f"{FUNCTIONS.index(function)} {capacity} {len(data)}\n".encode() + data)
        self.process.stdin.flush()
        status, size = map(int, self.process.stdout.readline().split())
        return status, self.process.stdout.read(size)

    def packed(self, function, data):
        status, packed = self.run(function, data, len(data) + len(data) // 1000 + 200)
        assert status == 0, (function, len(data), status)
        return packed


def texts():
    numbers = random.Random(1)
    yield b""
    yield b"abc" * 100000
    yield numbers.randbytes(100000)
    yield bytes(numbers.choice(b"etaoin shrdlu") for _ in range(70000))
    yield "".join(f"/*{n:06}:*/ \tadd8 gpr{n % 27},gpr{n * 7 % 27},gpr3\n" for n in range(20000)).encode()


def deflated(text, level, strategy, window_bits):
    packer = zlib.compressobj(level, zlib.DEFLATED, window_bits, 9, strategy)
    half = len(text) // 2
    return packer.compress(text[:half]) + packer.flush(zlib.Z_FULL_FLUSH) + packer.compress(text[half:]) + packer.flush()


def check_others_read_ours(codec, text):
    assert zlib.decompress(codec.packed("deflate", text), -15) == text
    assert zlib.decompress(codec.packed("zlib_compress", text)) == text
    packed = codec.packed("gzip_compress", text)
    assert gzip.decompress(packed) == text
    assert subprocess.run(["gzip", "-dc"], input=packed, stdout=subprocess.PIPE, check=True).stdout == text


def check_we_read_theirs(codec, text):
    fits = (0, text)
    for level in range(10):
        assert codec.run("zlib_decompress", zlib.compress(text, level), len(text) + 1) == fits
        assert codec.run("gzip_decompress", gzip.compress(text, level), len(text) + 1) == fits
        for strategy in (zlib.Z_DEFAULT_STRATEGY, zlib.Z_HUFFMAN_ONLY, zlib.Z_RLE, zlib.Z_FIXED):
            assert codec.run("inflate", deflated(text, level, strategy, -15), len(text) + 1) == fits, (level, strategy)
        for bits in range(9, 16):
            assert codec.run("zlib_decompress", deflated(text, level, 0, bits), len(text) + 1) == fits, (level, bits)


def check_damage(codec, text):
    """What others refuse we refuse, and what they still read gives the same here."""
    numbers = random.Random(2)
    packed = zlib.compress(text, 9)
    for _ in range(3000):
        damaged = bytearray(packed)
        for _ in range(numbers.choice((1, 1, 2, 20))):
            damaged[numbers.randrange(numbers.choice((40, len(damaged))))] ^= 1 << numbers.randrange(8)
        try:
            expected = 0, zlib.decompress(bytes(damaged))
        except zlib.error:
            expected = MALFORMED, None
        status, answer = codec.run("zlib_decompress", bytes(damaged), 1 << 20)
        assert status == expected[0] and (status or answer == expected[1]), (damaged.hex(), status)


def main():
    codec = Codec(sys.argv[1])
    for text in texts():
        check_others_read_ours(codec, text)
        check_we_read_theirs(codec, text)
    check_damage(codec, b"the quick brown fox jumps over the lazy dog " * 3 + bytes(range(256)) + b"and sleeps " * 40)
    print("codec: all right")


if __name__ == "__main__":
    main()
