# SPDX-License-Identifier: Apache-2.0
"""Random draws of the generators: the same on every machine and version of Python."""

BASE = 10**7  # of the limbs of high-precision numbers


class Draw:
    """The congruential generator that tests/prog/drawn_problem.h repeats step by step."""

    def __init__(self, seed):
        self.state = seed * 2654435761 + 12345

    def below(self, k):
        self.state = (self.state * 6364136223846793005 + 1442695040888963407) % 2**64
        return (self.state >> 33) % k


def limbs(draw, count):
    """An integer of `count` limbs by a random.Random."""
    return draw.randrange(BASE ** (count - 1), BASE**count)
