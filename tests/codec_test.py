#!/usr/bin/env python3
"""Checks that the codec and other implementations read each other, and what it says of broken streams:

    codec_test.py path/to/codec_server
"""

import bisect
import gzip
import random
import subprocess
import sys
import zlib

FUNCTIONS = ["deflate", "inflate", "zlib_compress", "zlib_decompress", "gzip_compress", "gzip_decompress"]
OK, MALFORMED, NO_ROOM = 0, -1, -2
LENGTHS = [*range(3, 11), *range(11, 19, 2), *range(19, 35, 4), *range(35, 67, 8), *range(67, 131, 16), *range(131, 258, 32), 258]
LENGTH_BITS = [0] * 8 + [n for n in range(1, 6) for _ in range(4)] + [0]
DISTANCES = [1, 2] + [1 + (2 + half << bits) for bits in range(14) for half in (0, 1)]
DISTANCE_BITS = [0, 0] + [bits for bits in range(14) for _ in (0, 1)]
# What is wrong, the stream's bits in their order, how reading it into three bytes ends, and what was read by then.
BROKEN = [("nothing at all", "", MALFORMED, 0),
          ("block type 3", "1 11", MALFORMED, 0),
          ("match without room", "1 10 10010001 0000001 00000 0000000", NO_ROOM, 3),
          ("ends in a match", "1 10 111111111 111111111 0000001", MALFORMED, 2),
          ("distance before the start", "1 10 10010001 0000001 00001 0000000", MALFORMED, 1),
          ("length code 286", "1 10 11000110 00000 0000000", MALFORMED, 0),
          ("distance code 30", "1 10 10010001 0000001 11110 0000000", MALFORMED, 1),
          ("287 literal codes", "1 01 01111 00000 0000 100 000 000 100" + "1" * 90, MALFORMED, 0),
          ("31 distance codes", "1 01 00000 01111 0000 100 000 000 100" + "1" * 90, MALFORMED, 0),
          ("too many code length codes", "1 01 00000 00000 0000 100 100 100 000 000", MALFORMED, 0),
          ("repeat with nothing before", "1 01 00000 00000 0000 100 000 000 100 100 000", MALFORMED, 0),
          ("repeat past the end", "1 01 00000 00000 0000 000 000 100 100 11111111 11111111", MALFORMED, 0),
          ("no end of block", "1 01 00000 00000 0000 000 000 100 100 11111111 11011011 0", MALFORMED, 0)]


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


def bytes_of(bits):
    bits = bits.replace(" ", "")
    return int(bits[::-1] or "0", 2).to_bytes((len(bits) + 7) // 8, "little")


def plain_deflate(text):
    """Greedy compression into one block of fixed codes, done the obvious way: what the fast one must write to the bit."""
    bits, heads, chain = ["110"], {}, {}

    def longest(at):
        length, distance = 0, 0
        candidate = heads.get((text[at] << 10 ^ text[at + 1] << 5 ^ text[at + 2]) & 0x7FFF, -1) if at + 3 <= len(text) else -1
        for _ in range(128):
            if candidate < 0 or at - candidate > 32768 or length == 258:
                break
            if text[candidate:candidate + length + 1] == text[at:at + length + 1]:
                end = length
                while end < 258 and at + end < len(text) and text[candidate + end] == text[at + end]:
                    end += 1
                length, distance = (end, at - candidate) if end > length else (length, distance)
            candidate = chain[candidate % 32768]
        return length, distance

    def symbol(number):
        code, count = ((0x30 + number, 8) if number < 144 else (0x100 + number, 9) if number < 256 else
                       (number - 256, 7) if number < 280 else (number - 88, 8))
        bits.append(f"{code:0{count}b}")

    def extra(value, bases, counts, put):
        code = bisect.bisect_right(bases, value) - 1
        put(code)
        bits.append(f"{value - bases[code]:0{counts[code]}b}"[::-1] if counts[code] else "")

    at = 0
    while at < len(text):
        length, distance = longest(at)
        if length < 3:
            length = 1
            symbol(text[at])
        else:
            extra(length, LENGTHS, LENGTH_BITS, lambda code: symbol(257 + code))
            extra(distance, DISTANCES, DISTANCE_BITS, lambda code: bits.append(f"{code:05b}"))
        for place in range(at, min(at + length, len(text) - 2)):
            key = (text[place] << 10 ^ text[place + 1] << 5 ^ text[place + 2]) & 0x7FFF
            chain[place % 32768] = heads.get(key, -1)
            heads[key] = place
        at += length
    symbol(256)
    return bytes_of("".join(bits))


def random_text(seed, size, symbols):
    """Words from a small stock, so that matches of all lengths and distances come up."""
    numbers, text = random.Random(seed), bytearray()
    while len(text) < size:
        length = min(numbers.randrange(400) if numbers.randrange(8) == 0 else numbers.randrange(6), len(text))
        start = numbers.randrange(len(text) - length + 1)
        text += text[start:start + length] + bytes([numbers.randrange(symbols)])
    return bytes(text[:size])


def check_deflate(codec):
    texts = [b"a" * 300, b"a" * 258, b"aaa", b"\xc8"] + [random_text(n, n * n * 15 + n % 9 + 1, 1 << n % 8) for n in range(48)]
    for period in (32767, 32768, 32769):
        start = random_text(7, period, 100)
        texts.append(start + start[:300])
    for text in texts:
        plain = plain_deflate(text)
        if len(plain) < len(text) + 6:
            assert codec.run("deflate", text, len(plain)) == (OK, plain), text[:80]
            assert codec.run("deflate", text, len(plain) - 1)[0] == NO_ROOM
    for size in (2000, 65535, 65536, 200000):
        noise = random.Random(1).randbytes(size)
        stored = codec.packed("deflate", noise)
        assert len(stored) == size + 5 * ((size - 1) // 65535 + 1) and stored[0] == (size < 65536)
        assert codec.run("inflate", stored, size) == codec.run("deflate", noise, len(stored))[:1] + (noise,)
        assert codec.run("deflate", noise, len(stored) - 1)[0] == NO_ROOM
    assert codec.packed("deflate", b"").hex() == "010000ffff" and codec.packed("zlib_compress", b"").hex() == "7801010000ffff00000001"


def check_broken(codec):
    streams = [(what, bytes_of(bits), *ends) for what, bits, *ends in BROKEN]
    streams += [("lengths that don't complement", bytes.fromhex("010100ffff41"), MALFORMED, 0),
                ("stored bytes without room", bytes.fromhex("010400fbff41424344"), NO_ROOM, 3)]
    for what, stream, status, written in streams:
        answer = codec.run("inflate", stream, 3)
        assert (answer[0], len(answer[1])) == (status, written), (what, answer)


def check_wrappers(codec):
    """Whatever bit is turned and wherever a stream is cut, nothing wrong passes for right."""
    text = random_text(3, 400, 20)
    for kind in ("zlib", "gzip"):
        whole, unpack = codec.packed(kind + "_compress", text), kind + "_decompress"
        assert codec.run(unpack, whole, len(text)) == (OK, text) and codec.run(unpack, whole, len(text) - 1)[0] == NO_ROOM
        assert [codec.run(kind + "_compress", text, room)[0] for room in (7, len(whole) - 1, len(whole))] == [NO_ROOM, NO_ROOM, OK]
        for broken in [whole[:size] for size in range(len(whole))] + [whole[:-8] + b"\0" + whole[-8:]]:
            assert codec.run(unpack, broken, 500)[0] == MALFORMED, broken
        for bit in range(8 * len(whole)):
            damaged = bytearray(whole)
            damaged[bit // 8] ^= 1 << bit % 8
            status, answer = codec.run(unpack, bytes(damaged), len(text) + 100)
            assert status != OK or answer == text, bit
    packed = codec.packed("gzip_compress", b"hi")
    assert packed[:10].hex() == "1f8b08000000000000ff"
    for flags, fields, expected in [(0x1F, b"\2\0zzname\0why\0cc", (OK, b"hi"))] + [
            (1 << n, b"\xff\xff", (MALFORMED, b"")) for n in range(2, 8)]:
        assert codec.run("gzip_decompress", packed[:3] + bytes([flags]) + packed[4:10] + fields + packed[10:], 10) == expected, flags


def main():
    codec = Codec(sys.argv[1])
    check_deflate(codec)
    check_broken(codec)
    check_wrappers(codec)
    for text in texts():
        check_others_read_ours(codec, text)
        check_we_read_theirs(codec, text)
    check_damage(codec, b"the quick brown fox jumps over the lazy dog " * 3 + bytes(range(256)) + b"and sleeps " * 40)
    print("codec: all right")


if __name__ == "__main__":
    main()
