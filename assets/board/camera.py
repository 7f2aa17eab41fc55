"""The one camera: it aims the ray tracer and projects outlines, so both see the same picture.

Plan coordinates are millimetres on the board: x to the right along its front edge, y away from
the viewer, z up from the board's upper side.
"""

from dataclasses import dataclass

import numpy as np

Vector = tuple[float, float, float]
Pixel = tuple[float, float]

PICTURE_WIDTH = 2880
PICTURE_HEIGHT = 1620


@dataclass(frozen=True)
class Camera:
    """A pinhole camera that circles its target."""

    target: Vector
    azimuth: float  # degrees; 0 looks along y, positive stands further to the left
    elevation: float  # degrees above the board
    distance: float  # millimetres
    focal: float  # distance at which the picture is one unit wide

    def _basis(self) -> tuple[np.ndarray, np.ndarray, np.ndarray, np.ndarray]:
        azimuth, elevation = np.radians(self.azimuth), np.radians(self.elevation)
        back = np.array(
            [
                -np.sin(azimuth) * np.cos(elevation),
                -np.cos(azimuth) * np.cos(elevation),
                np.sin(elevation),
            ]
        )
        forward = -back
        right = np.cross(forward, (0.0, 0.0, 1.0))
        right /= np.linalg.norm(right)
        up = np.cross(right, forward)
        return np.array(self.target) + back * self.distance, right, up, forward

    def project(self, point: Vector) -> Pixel:
        """The picture pixel on which a point of the board lies."""
        location, right, up, forward = self._basis()
        ray = np.array(point) - location
        depth = ray @ forward
        x = (ray @ right) / depth * self.focal
        y = (ray @ up) / depth * self.focal
        return (
            float((0.5 + x) * PICTURE_WIDTH),
            float(0.5 * PICTURE_HEIGHT - y * PICTURE_WIDTH),
        )

    def depth(self, points: list[Vector]) -> float:
        """How far the middle of some points is from the camera, along its direction."""
        location, _, _, forward = self._basis()
        middle = (np.min(points, axis=0) + np.max(points, axis=0)) / 2
        return float((middle - location) @ forward)

    def declaration(self) -> str:
        """The camera in the ray tracer's language."""
        location, right, up, forward = self._basis()
        height = PICTURE_HEIGHT / PICTURE_WIDTH
        return (
            "camera { perspective\n"
            f"  location {pov(location)} direction {pov(forward * self.focal)}\n"
            f"  right {pov(right)} up {pov(up * height)}\n}}\n"
        )


def pov(point: Vector | np.ndarray) -> str:
    """A plan point as the ray tracer's vector, whose second axis points up."""
    return f"<{point[0]:.4f},{point[2]:.4f},{point[1]:.4f}>"


BOARD_CAMERA = Camera(
    target=(120.0, 116.0, 0.0), azimuth=34.0, elevation=46.0, distance=760.0, focal=1.46
)
