"""The CAD-like files of the benchmarks' generated packages.

Every draw comes from the random generator the caller passes in, in the order the calls are made,
so a script that seeds its generator gets the same package every time.
"""

# Identifiers 50, 210, 400 and 500 name folders of their own below the installation folder; 10, 20
# and 40 get one from the subfolder.
FOLDERS = [(10, "Program\\"), (20, "Data\\"), (40, "Library\\"), (50, ""), (210, ""), (400, ""), (500, "")]
EXTENSIONS = {"text": "txt", "binary": "bin", "random": "dat"}
WORDS = ("line arc circle layer block hatch dimension viewport polyline spline text style "
         "insert attribute scale rotate mirror offset trim extend fillet chamfer").split()


class Content:
    """Makes file contents of three kinds: text-like, binary with runs of zeros, incompressible."""

    def __init__(self, rng):
        self.rng = rng
        self.text_pool = "".join(f"{rng.choice(WORDS)} {rng.randint(0, 99999)} {rng.choice(WORDS)}={rng.random():.6f}\r\n"
                                 for _ in range(60000)).encode()

    def kind(self):
        """text, binary or random, 5:3:2."""
        return self.rng.choices(["text", "binary", "random"], [5, 3, 2])[0]

    def small_size(self):
        """0.5-96 KB, evenly spread on a logarithmic scale."""
        return int(512 * (96 * 1024 / 512) ** self.rng.random())

    def make(self, kind, size):
        rng = self.rng
        if kind == "text":
            out = bytearray()
            while len(out) < size:
                start = rng.randrange(len(self.text_pool) - 4096)
                out += self.text_pool[start:start + rng.randint(512, 4096)]
            return bytes(out[:size])
        if kind == "binary":        # records of random bytes between runs of zeros
            out = bytearray()
            while len(out) < size:
                out += rng.randbytes(rng.randint(16, 2048)) + bytes(rng.randint(16, 2048))
            return bytes(out[:size])
        return rng.randbytes(size)  # already compressed: images, archives


def file_name(number, kind):
    """f0000.txt, f0001.bin, ...: the name the benchmarks' log parsers look for."""
    return f"f{number:04d}.{EXTENSIONS[kind]}"
