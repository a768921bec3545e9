"""Pictures that look like some: a sky, a sun and hills, drawn by ImageMagick."""
import struct

from desktop import Failure, run


def draw(path, size, sky, hills):
    """A landscape; `sky`: the colours at its top and its bottom."""
    width, height = size
    sun = f"circle {width * 7 // 10},{height * 3 // 10} {width * 7 // 10},{height * 4 // 10}"
    ridge = " ".join(f"{width * x // 8},{height * y // 100}" for x, y in
                     enumerate((70, 60, 50, 62, 74, 58, 45, 57, 70)))
    done = run("convert", "-size", f"{width}x{height}", f"gradient:{sky[0]}-{sky[1]}",
               "-fill", "#fff3d0", "-draw", sun, "-fill", hills,
               "-draw", f"polygon 0,{height} {ridge} {width},{height}", str(path))
    if done.returncode:
        raise Failure(f"{path} could not be drawn: {done.stderr}")


def hold_upright(path):
    """Notes in a JPEG that the camera was turned by a quarter."""
    note = b"Exif\0\0II*\0" + struct.pack("<IHHHIHHI", 8, 1, 0x0112, 3, 1, 6, 0, 0)
    jpeg = path.read_bytes()
    path.write_bytes(jpeg[:2] + b"\xff\xe1" + struct.pack(">H", len(note) + 2) + note + jpeg[2:])
