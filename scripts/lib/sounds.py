"""usage: sounds.py FOLDER

Writes the notification sounds into the folder: WAV files with one channel, 22050 samples per second and 16 bits per
sample, which every system can play. The results are the same on every machine.
"""
import math
import pathlib
import struct
import sys
import wave

RATE = 22050
LOUDNESS = 0.5
ATTACK = 0.008  # seconds; a tone that starts at full volume clicks
RELEASE = 0.03

# Each note: start in seconds, duration in seconds, frequency in hertz, decay (higher is shorter, 0 is even)
SOUNDS = {
    # Two rising notes of a bell.
    "message": [(0.0, 0.5, 880.0, 9), (0.12, 0.55, 1318.5, 8)],
    # Two short trills of a telephone.
    "call": [(start + 0.05 * step, 0.05, (740.0, 932.3)[step % 2], 0)
             for start in (0.0, 0.45) for step in range(7)],
    # Two falling, softer notes.
    "connection-lost": [(0.0, 0.3, 523.3, 5), (0.22, 0.45, 349.2, 6)],
}


def note_sample(time, duration, frequency, decay):
    """A tone with two weak overtones; `time` is counted from its start."""
    envelope = math.exp(-decay * time) * min(1, time / ATTACK, (duration - time) / RELEASE)
    phase = 2 * math.pi * frequency * time
    return envelope * (math.sin(phase) + 0.2 * math.sin(2 * phase) + 0.05 * math.sin(3 * phase)) / 1.25


def samples(notes):
    length = max(start + duration for start, duration, *_ in notes)
    for index in range(int(length * RATE)):
        time = index / RATE
        total = sum(note_sample(time - start, duration, frequency, decay)
                    for start, duration, frequency, decay in notes if start <= time < start + duration)
        yield round(32767 * max(-1.0, min(1.0, LOUDNESS * total)))


def write(path, notes):
    values = list(samples(notes))
    with wave.open(str(path), "wb") as file:
        file.setnchannels(1)
        file.setsampwidth(2)
        file.setframerate(RATE)
        file.writeframes(struct.pack(f"<{len(values)}h", *values))


def main():
    folder = pathlib.Path(sys.argv[1])
    folder.mkdir(parents=True, exist_ok=True)
    for name, notes in SOUNDS.items():
        path = folder / f"{name}.wav"
        write(path, notes)
        print(f"Created {path}, {path.stat().st_size} bytes")


main()
