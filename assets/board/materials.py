"""Materials and studio light, in the ray tracer's language."""

from camera import BOARD_CAMERA

BLACK = "T_Black"
COAL = "T_Coal"
GREY = "T_Grey"
SLATE = "T_Slate"
WHITE = "T_White"
STEEL = "T_Steel"
NICKEL = "T_Nickel"
ALUMINIUM = "T_Aluminium"
ARMOR = "T_Armor"
GOLD = "T_Gold"
TIN = "T_Tin"
EPOXY = "T_Epoxy"
CHOKE = "T_Choke"
SLEEVE = "T_Sleeve"
CERAMIC = "T_Ceramic"
CAVITY = "T_Cavity"
BLUE = "T_Blue"
TEAL = "T_Teal"
RED = "T_Red"
LIME = "T_Lime"
PINK = "T_Pink"
SKY = "T_Sky"
AMBER = "T_Amber"
PRINT = "T_Print"
PRINT_DIM = "T_PrintDim"
PRINT_AMBER = "T_PrintAmber"

# name: red, green, blue (0 to 1, as on the screen), then the finish
_SOLIDS: dict[str, tuple[tuple[float, float, float], str]] = {
    BLACK: ((0.085, 0.087, 0.092), "F_Plastic"),
    COAL: ((0.165, 0.17, 0.18), "F_Plastic"),
    SLATE: ((0.235, 0.245, 0.26), "F_Plastic"),
    GREY: ((0.36, 0.37, 0.385), "F_Plastic"),
    WHITE: ((0.78, 0.78, 0.77), "F_Plastic"),
    EPOXY: ((0.105, 0.108, 0.115), "F_Matte"),
    CHOKE: ((0.27, 0.275, 0.285), "F_Matte"),
    SLEEVE: ((0.07, 0.07, 0.075), "F_Plastic"),
    CERAMIC: ((0.56, 0.45, 0.33), "F_Matte"),
    CAVITY: ((0.012, 0.012, 0.014), "F_Matte"),
    BLUE: ((0.10, 0.36, 0.78), "F_Plastic"),
    TEAL: ((0.05, 0.60, 0.62), "F_Plastic"),
    RED: ((0.75, 0.14, 0.12), "F_Plastic"),
    LIME: ((0.42, 0.74, 0.22), "F_Plastic"),
    PINK: ((0.92, 0.45, 0.58), "F_Plastic"),
    SKY: ((0.34, 0.62, 0.90), "F_Plastic"),
    AMBER: ((0.74, 0.40, 0.05), "F_Plastic"),
    PRINT: ((0.76, 0.77, 0.78), "F_Print"),
    PRINT_DIM: ((0.52, 0.54, 0.56), "F_Print"),
    PRINT_AMBER: ((0.76, 0.42, 0.06), "F_Print"),
    STEEL: ((0.56, 0.57, 0.585), "F_Metal"),
    NICKEL: ((0.68, 0.68, 0.67), "F_Metal"),
    ALUMINIUM: ((0.25, 0.265, 0.29), "F_Anodised"),
    ARMOR: ((0.16, 0.17, 0.19), "F_Anodised"),
    GOLD: ((0.84, 0.62, 0.27), "F_Metal"),
    TIN: ((0.64, 0.65, 0.66), "F_Metal"),
}

# Rolled sheet is never quite even; a trace of grain keeps large faces from looking like paper.
_BRUSHED = {
    STEEL: "normal { bumps 0.025 scale <14, 3, 0.7> }",
    ALUMINIUM: "normal { bumps 0.012 scale <9, 0.6, 0.6> }",
    ARMOR: "normal { bumps 0.01 scale <9, 0.6, 0.6> }",
}

_FINISHES = """
#declare F_Matte = finish { ambient 0 diffuse 0.85 specular 0.12 roughness 0.12 }
#declare F_Plastic = finish { ambient 0 diffuse 0.8 specular 0.28 roughness 0.03
  reflection { 0.006, 0.045 } }
#declare F_Print = finish { ambient 0 diffuse 0.86 }
#declare F_Metal = finish { ambient 0 diffuse 0.42 specular 0.55 roughness 0.02 metallic
  brilliance 1.6 reflection { 0.34 metallic } }
#declare F_Anodised = finish { ambient 0 diffuse 0.72 specular 0.5 roughness 0.045 metallic
  brilliance 1.3 reflection { 0.09 metallic } }
#declare F_Board = finish { ambient 0 diffuse 0.86 specular 0.16 roughness 0.03
  reflection { 0.012, 0.07 } }
"""

_LIGHTS = """
global_settings {{ assumed_gamma 1.0 max_trace_level 6 {radiosity} }}
// The sky is seen in reflections alone: the picture's background stays transparent.
sphere {{ 0, 6000 inverse no_shadow no_image
  pigment {{ gradient y scale 12000 translate -6000*y color_map {{
    [0.48 srgb <0.16,0.165,0.18>] [0.52 srgb <0.22,0.23,0.25>] [0.80 srgb <0.52,0.54,0.58>]
    [1.0 srgb <0.78,0.80,0.84>] }} }}
  finish {{ ambient 0 diffuse 0 emission 1 }} }}
box {{ <-900,1500,500>, <500,1501,1300> no_shadow no_image
  pigment {{ rgb 1 }} finish {{ ambient 0 diffuse 0 emission 1.6 }} }}
light_source {{ <-420,900,620> srgb <1.0,0.965,0.91>*1.95
  area_light <190,0,120>, <0,120,-90>, {samples}, {samples} adaptive 2 circular orient }}
light_source {{ <-700,520,-620> srgb <0.82,0.89,1.0>*1.1
  area_light <240,0,-240>, <0,240,0>, {samples}, {samples} adaptive 2 circular orient }}
light_source {{ <900,700,-100> srgb <1.0,0.93,0.85>*{fill} shadowless }}
light_source {{ <100,1200,-200> srgb <1,1,1>*{fill} shadowless }}
"""


# Light that comes from everywhere darkens the corners between parts; drafts go without it.
_RADIOSITY = """radiosity { pretrace_start 0.04 pretrace_end 0.004 count 120 nearest_count 10
  error_bound 0.35 recursion_limit 1 low_error_factor 0.6 gray_threshold 0.5 brightness 1.0
  normal off media off }"""


def prologue(light_samples: int, radiosity: bool) -> str:
    """Everything that precedes the solids: camera, light, finishes and materials."""
    lights = _LIGHTS.format(
        samples=light_samples,
        radiosity=_RADIOSITY if radiosity else "",
        fill=0.24 if radiosity else 0.45,
    )
    lines = ["#version 3.7;", lights, _FINISHES]
    for name, (color, finish) in _SOLIDS.items():
        red, green, blue = color
        lines.append(
            f"#declare {name} = texture {{ pigment {{ srgb <{red},{green},{blue}> }}"
            f" {_BRUSHED.get(name, '')} finish {{ {finish} }} }}"
        )
    lines.append(BOARD_CAMERA.declaration())
    return "\n".join(lines) + "\n"
