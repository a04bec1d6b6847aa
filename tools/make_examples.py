#!/usr/bin/env python3
"""Write the project file and the README of every folder of examples/.

The numbers come from the FACTS.txt beside the snapshots: bounds of the data,
box, counts, the record grammar. Each project centres its data on the origin
and scales them to about two units, which the default camera sees whole.
morentis-film then writes each project with every setting that the program
knows, so that nothing of what was open before shows in it: build it first.
"""
import math
import pathlib
import statistics
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
EXAMPLES = ROOT / "examples"
FILM = ROOT / "build/release/morentis-film"

# Largest edge of the scaled data.
EXTENT = 1.8
# Sand, blue, vermilion, green: told apart on black, also with weak colour vision.
COLOURS = ["0.93 0.75 0.46 1", "0.36 0.66 0.92 1", "0.92 0.42 0.26 1", "0.45 0.78 0.52 1"]
OWN_RUN = ("Origin: our own run of LAMMPS (29 Sep 2021); licence: that of Morentis, see LICENSE "
           "in the root.")
OWN_CODE = "Origin: our own N-body run; licence: that of Morentis, see LICENSE in the root."

LINEAR = 0
CONSTANT, VARIABLE, SORT_BY_ID = 0, 1, 2
OPEN_BOX, PERIODIC_XY, PERIODIC_XYZ = 0, 1, 2

# All interpolate linearly: a dump's time is its step number, so velocities can't
# carry a particle to the next snapshot, and the galaxies turn too far between two.
SETS = {
    "lj_melt_text": dict(
        what="A Lennard-Jones crystal of 1372 atoms melts: text dumps, sorted by id, in a periodic box.",
        origin=OWN_RUN, periodic=PERIODIC_XYZ, points=[14] * 4, radius=0.5),
    "lj_unsorted_text": dict(
        what="A melt of two atom types whose rows stand in another order in every file: matched by id.",
        origin=OWN_RUN, periodic=PERIODIC_XYZ, number=SORT_BY_ID, points=[14, 14, 10, 14], radius=0.5),
    "lj_melt_bin": dict(
        what="The melting crystal of lj_melt_text as binary records in the default layout; value is speed.",
        origin=OWN_RUN, periodic=PERIODIC_XYZ, box_from="lj_melt_text", points=[14] * 4),
    "friction_text": dict(
        what="Two asperities rub in a flat slab: atom types 0 slabs, 1 lower and 2 upper asperity, 3 walls.",
        origin=OWN_RUN, periodic=PERIODIC_XY, flat=True, points=[12, 14, 14, 10], radius=0.5),
    "friction_bin_622187": dict(
        what="The same slab as binary records with two dummy words and the fields in an order of their own.",
        origin=OWN_RUN, periodic=PERIODIC_XY, box_from="friction_text", flat=True,
        points=[12, 14, 14, 10], radius=0.5),
    "deposit_text": dict(
        what="Atoms rain on a surface: 350 particles grow to 450, types 0 surface and 1 rain.",
        origin=OWN_RUN, periodic=PERIODIC_XY, number=VARIABLE, points=[14] * 4, radius=0.5),
    "galaxy_small_bin": dict(
        what="Two disc galaxies meet: types 0 and 2 discs, 1 and 3 haloes; binary, default layout.",
        origin=OWN_CODE, points=[8, 6, 8, 6], additive=True, film="galaxy_film"),
    "galaxy_small_tipsy": dict(
        what="The two galaxies in a native N-body layout that the grammar describes with dummies.",
        origin=OWN_CODE, points=[8] * 4, additive=True),
    "public_pyscal_ni500": dict(
        what="500 nickel atoms vibrate in a box that breathes; text dumps of somebody else's run.",
        origin="Origin: examples/traj.light of github.com/pyscal/pyscal, cut into one file a frame; "
               "licence: BSD-3-Clause, see LICENSE.pyscal.txt.",
        periodic=PERIODIC_XYZ, points=[14] * 4, radius=1.2),
}


def read_facts(folder):
    """The words of FACTS.txt: scalars by name, frames and boxes in order."""
    facts = {"frames": [], "boxes": []}
    for line in (folder / "FACTS.txt").read_text().splitlines():
        name, _, rest = line.partition(" ")
        if name == "frame":
            words = rest.split()
            facts["frames"].append(dict(file=words[1], bounds=[
                (float(low), float(high)) for low, high in zip(words[4:7], words[7:10])]))
        elif name == "box":
            words = [float(word) for word in rest.split()[1:7]]
            facts["boxes"].append(list(zip(words[0::2], words[1::2])))
        elif name in ("kind", "header", "body"):
            facts[name] = rest
    return facts


def typical_bounds(frames):
    """Median bounds over the frames: a late stray must not make the start tiny."""
    return [(statistics.median(frame["bounds"][axis][0] for frame in frames),
             statistics.median(frame["bounds"][axis][1] for frame in frames)) for axis in range(3)]


def place(bounds):
    """Translation to the origin, scale to EXTENT, and the scaled edges."""
    edges = [high - low for low, high in bounds]
    scale = EXTENT / max(edges)
    return [0.0 - (low + high) / 2 for low, high in bounds], scale, [edge * scale for edge in edges]


def numbers(values):
    return " ".join(f"{value:.6f}" for value in values)


def loader_lines(setup, facts, shift, scale):
    return [
        f"DataLoadDataType={1 if facts['kind'] == 'text' else 0}",
        f"DataLoadGrammerHead={facts['header']}",
        f"DataLoadGrammerBody={facts['body']}",
        f"InterpolateType={LINEAR}",
        f"VariableNumber={setup.get('number', CONSTANT)}",
        f"LoaderTranslate={numbers(shift)}",
        f"LoaderScale={scale:.6f}",
        "LoaderScaleValue1=1.000000",
        "LoaderLogarithm=0",
    ]


def view_lines(setup):
    # Display mode and geometry of the four panels: camera, then from +z, -x, -y.
    modes = [(6, 1) if setup.get("flat") else (0, 0), (6, 1), (1, 1), (3, 1)]
    # One colour for a type needs no legend.
    lines = ["PreviewPanelType=0", "OverLayShowLegend=0 0 0 0"]
    for panel, (mode, geometry) in enumerate(modes):
        prefix = f"Panel{panel}"
        lines += [
            f"{prefix}ShowMessage=1",
            f"{prefix}ShowItems=1",
            f"{prefix}ShowGrid={0 if setup.get('flat') else 1}",
            f"{prefix}ShowData=1",
            f"{prefix}GLDepthMin=0.050000",
            f"{prefix}GLDepthMax=500.000000",
            f"{prefix}GLPersAngle=35.000000",
            # The width that an axis view shows: most views are wider than high.
            f"{prefix}GLOrthoScale={2.8 if setup.get('flat') else 3.6:.6f}",
            f"{prefix}DisplayMode={mode}",
            f"{prefix}GLGeometry={geometry}",
        ]
    return lines


def time_lines(last):
    return [
        f"TimeMaxFrame={last}",
        "TimeWorkAreaMin=0",
        f"TimeWorkAreaMax={last}",
        "TimeActiveAreaMin=0",
        f"TImeActiveAreaMax={last}",
        "TimeUseTimeRemap=0",
        "TimeUseMotionBlur=0",
        "TimeAnimStep=1",
        # A dozen files would be over in half a second.
        "TimeAnimInterp=10",
        "TimeRepeat=1",
    ]


OPTION_LINES = ["DownSizing=1", "SortOrder=0", "Classify=1", "Shadow=0"]


def attribute_lines(setup, scale):
    lines = []
    for kind, colour in enumerate(COLOURS):
        prefix = f"SEQ0TYPE{kind}"
        lines += [
            f"{prefix}ColUseColorCurve=0",
            f"{prefix}ColConstantColor={colour}",
            f"{prefix}DrawType=0",
            f"{prefix}BlendType={1 if setup.get('additive') else 0}",
            # Radii act when the user turns to billboards or spheres.
            f"{prefix}RadiusType={1 if 'radius' in setup else 0}",
            f"{prefix}RadiusFactor=1.000000",
            f"{prefix}RadiusFactorForConst={setup.get('radius', 0.5) * scale:.6f}",
            f"{prefix}PointSize={setup['points'][kind]}",
            f"{prefix}AlphaType=0",
            f"{prefix}AlphaFactro={0.8 if setup.get('additive') else 1:.6f}",
        ]
    return lines


def periodic_lines(setup, edges):
    lines = [f"PeriodicType={setup.get('periodic', OPEN_BOX)}",
             "PeriodicSize=1.000000 1.000000 1.000000", "PeriodicEffect=0"]
    for axis in range(3):
        vector = [edges[axis] if other == axis else 0 for other in range(3)]
        lines.append(f"PeriodicBaseVector{axis}={numbers(vector)}")
    return lines


def project(name, setup):
    facts = read_facts(EXAMPLES / name)
    boxes = facts["boxes"]
    if "box_from" in setup:
        boxes = read_facts(EXAMPLES / setup["box_from"])["boxes"]
    shift, scale, edges = place(boxes[0] if boxes else typical_bounds(facts["frames"]))
    lines = (loader_lines(setup, facts, shift, scale) + view_lines(setup)
             + time_lines(len(facts["frames"]) - 1) + OPTION_LINES
             + ["DataSequence0=0", facts["frames"][0]["file"]]
             + attribute_lines(setup, scale) + periodic_lines(setup, edges)
             # A path of the machine that writes this would stand there else.
             + ["PathPovRay=/usr/bin/povray", "PathPovWork=POV", "PovColorByParticle=1",
                "PovGroupMaterials=1", "PovLikeView=1",
                "ImgSequenceFile=Preview%04d.png", "FBOBufferSize=3", "LineWidth=5.000000"])
    return "\n".join(lines) + "\n"


def curve(name, values):
    """Keys at even steps over the whole film, with smooth ways between them."""
    keys = [f"{k / (len(values) - 1):.9f} 1 {value:.6f} 0.000000 0.000000" for k, value in enumerate(values)]
    return [f"Parameter_{name}", "timeDepend=1", "periodic=0", f"itemnum {len(keys)}"] + keys


def flight_lines():
    """A camera that flies around the middle, rises, and looks at it; nothing but particles in the picture."""
    turns = [math.radians(20 + 35 * k) for k in range(6)]
    away = [1.5, 1.35, 1.3, 1.5, 1.9, 2.3]
    lines = ["Panel0DisplayMode=7", "Panel0ShowItems=0", "Panel0ShowGrid=0", "Panel0ShowMessage=0",
             # More light than the screen shows: the bright middles keep their colours.
             "ExposureLevel=0 2.2", "ExposureGamma=1.5"]
    for kind, radius in enumerate([0.009, 0.014, 0.009, 0.014]):
        prefix = f"SEQ0TYPE{kind}"
        lines += [f"{prefix}DrawType=1", f"{prefix}RadiusType=1", f"{prefix}RadiusFactorForConst={radius}",
                  f"{prefix}AlphaFactro=0.6"]
    lines += ["---CameraPath", "CameraGeometry=0", "CameraVAngle=35", "CareraLookAnchor=1",
             "-ParamGroup=Camera Translate", "dimension=3", "Start"]
    lines += curve("x", [r * math.cos(turn) for r, turn in zip(away, turns)])
    lines += curve("y", [r * math.sin(turn) for r, turn in zip(away, turns)])
    return lines + curve("z", [0.3 + 0.2 * k for k in range(6)])


def film(name, setup):
    """The project once more, as a film; the last of a key counts."""
    return project(name, setup) + "\n".join(flight_lines()) + "\n"


# What filters do, on the data that are there: a project more of a set.

def camera_lines(places, look=(0.0, 0.0, 0.0), angle=30):
    """A camera through these places, upright, that looks at one point; nothing but the scene in the picture."""
    turns = []
    for x, y, z in places:
        ahead = [look[0] - x, look[1] - y, look[2] - z]
        # Roll, pitch and yaw.
        turns.append((0.0, -math.degrees(math.atan2(ahead[2], math.hypot(ahead[0], ahead[1]))),
                      math.degrees(math.atan2(ahead[1], ahead[0]))))
    lines = ["Panel0DisplayMode=7", "Panel0ShowItems=0", "Panel0ShowGrid=0", "Panel0ShowMessage=0",
             "OverLayTimePos=4", "---CameraPath", "CameraGeometry=0", f"CameraVAngle={angle}",
             "CareraLookAnchor=0"]
    for group, values in (("Translate", places), ("Rotation", turns)):
        lines += [f"-ParamGroup=Camera {group}", "dimension=3", "Start"]
        for axis in range(3):
            lines += curve("xyz"[axis], [value[axis] for value in values])
    return lines


def around(radius, height, first, last, number=6):
    """Places on an arc about the z axis, from one angle to another, in degrees."""
    turns = [math.radians(first + (last - first) * k / (number - 1)) for k in range(number)]
    return [(radius * math.cos(turn), radius * math.sin(turn), height) for turn in turns]


def colour_lines(prefix, stops):
    """A colour curve of the value: (share of the scale, red, green, blue)."""
    lines = [f"-ParamGroup={prefix} ColorCurve", "dimension=4", "Start"]
    for channel in range(4):
        lines += [f"Parameter_{'RGBA'[channel]}", "timeDepend=1", "periodic=0", f"itemnum {len(stops)}"]
        for stop in stops:
            value = stop[1 + channel] if channel < 3 else 1
            lines.append(f"{stop[0]:.9f} 1 {value:.6f} 0.000000 0.000000")
    return lines


def ball_lines(kind, radius, colour, shine=0.5):
    """Exact spheres of one type, lit by the Phong shader."""
    prefix = f"SEQ0TYPE{kind}"
    shade = " ".join(f"{0.22 * float(part):.6f}" for part in colour.split()[:3])
    return [f"{prefix}DrawType=2", f"{prefix}DrawQuality=3", f"{prefix}ShaderType=2", f"{prefix}RadiusType=1",
            f"{prefix}RadiusFactorForConst={radius:.6f}", f"{prefix}DiffuseConstantColor={colour}",
            f"{prefix}AmbientConstantColor={shade} 1",
            f"{prefix}SpecularConstantColor={shine} {shine} {shine} 1"]


def filter_lines(kind, name, items, translate=None, scale=None, rotate=None):
    """A filter's block; places are lists of x, y, z over the film."""
    lines = ["-FilterBegin", f"FilterType={kind}", "FilterValid=1", f"FilterName={name}"]
    lines += items
    for group, values in (("Translate", translate), ("Rotate", rotate), ("Scale", scale)):
        if values is None:
            continue
        lines += [f"-ParamGroup=Filter {group}", "dimension=3", "Start"]
        for axis in range(3):
            lines += curve("xyz"[axis], [value[axis] for value in values])
    return lines + ["-FilterEnd"]


def list_lines(index, filters):
    return [f"---FilterCtrl{index}Begin"] + sum(filters, []) + [f"---FilterCtrl{index}End"]


BOOLEAN, OBJECT, FOG, COPY, STICK = 0, 2, 4, 6, 7  # as "FilterType="


VALUE, DISTANCE = 0, 2  # of the data, of the origin, as "DependType="


def cut_lines(_folder):
    """A box goes into the melt and takes a corner away; colours tell how far an atom is from the middle."""
    shells = [(0.0, 1.0, 0.93, 0.62), (0.3, 0.98, 0.66, 0.25), (0.55, 0.85, 0.33, 0.22), (0.8, 0.35, 0.30, 0.55),
              (1.0, 0.16, 0.38, 0.62)]
    lines = ball_lines(1, 0.078, "0.8 0.8 0.8 1", 0.35)
    for part in ("Diffuse", "Ambient"):
        prefix = f"SEQ0TYPE1{part}"
        dim = 1.0 if part == "Diffuse" else 0.25
        lines += [f"{prefix}UseColorCurve=1", f"{prefix}ScalingMin=0", f"{prefix}ScalingMax=1.35",
                  f"{prefix}DependType={DISTANCE}"]
        lines += colour_lines(prefix, [(stop[0], *(dim * part for part in stop[1:])) for stop in shells])
    lines += ["BGColorConstantColor=0.02 0.03 0.05 1"]
    lines += camera_lines(around(4.9, 2.9, -75, -25), look=(0.0, 0.0, -0.06), angle=30)
    # From outside of the near corner to the middle.
    way = [(1.75, -1.75, 1.75), (1.35, -1.35, 1.35), (0.95, -0.95, 0.95), (0.7, -0.7, 0.7)]
    cut = filter_lines(BOOLEAN, "Boolean00", ["OperatorType=1", "RegionType=0", "BorderFactor=0.000000"],
                       translate=way, scale=[(1.5, 1.5, 1.5)] * 2)
    return lines + list_lines(0, [cut])


def bond_lines(_folder):
    """Eight cells of the nickel crystal, with bonds that go through the faces and don't flicker."""
    lines = []
    for kind in range(4):
        lines += ball_lines(kind, 0.052, "0.95 0.62 0.30 1", 0.6)
    lines += ["BGColorConstantColor=0.03 0.04 0.06 1"]
    middle = (0.9, 0.9, 0.68)
    lines += camera_lines([(x + 0.9, y + 0.9, z) for x, y, z in around(8.6, 4.2, 20, 60)], look=middle, angle=30)
    bonds = filter_lines(STICK, "Stick00", [
        "StickType=1", "StickRadius=0.012000", "CalcType=1", "CritType=0", "CritA=0.280000",
        "AcrossFaces=1", "KeepUntil=0.310000"])
    copies = filter_lines(COPY, "CopyBox00", [f"CopyArray{end}{axis}={value}" for axis in range(3)
                                              for end, value in (("Min", 0), ("Max", 2))])
    # What is far fades, so that the eye sees how deep it is.
    fog = ["-FilterBegin", f"FilterType={FOG}", "FilterValid=1", "FilterName=Fog00", "FogType=2",
           "FogStart=6.800000", "FogEnd=12.000000", "FogColorConstantColor=0.03 0.04 0.06 1", "-FilterEnd"]
    return lines + list_lines(1, [bonds]) + list_lines(2, [copies, fog])


def lathe(profiles, corners=96):
    """An OBJ of profiles (radius, height) that are turned about the z axis."""
    vertices, faces = [], []
    for profile in profiles:
        base = len(vertices)
        for radius, height in profile:
            for k in range(corners):
                turn = 2 * math.pi * k / corners
                vertices.append((radius * math.cos(turn), radius * math.sin(turn), height))
        for ring in range(len(profile) - 1):
            for k in range(corners):
                low, high = base + ring * corners, base + (ring + 1) * corners
                following = (k + 1) % corners
                faces.append((low + k, low + following, high + following, high + k))
    lines = ["# A dish and a nozzle, written by tools/make_examples.py"]
    lines += [f"v {x:.5f} {y:.5f} {z:.5f}" for x, y, z in vertices]
    lines += ["f " + " ".join(str(corner + 1) for corner in face) for face in faces]
    return "\n".join(lines) + "\n"


def mesh_lines(folder):
    """The atoms rain from a nozzle onto a crystal that lies in a dish: one mesh, in the DataBox of the data."""
    dish = [(0.001, -1.00), (0.60, -1.00), (0.70, -0.95), (0.74, -0.87), (0.74, -0.80), (0.71, -0.79),
            (0.69, -0.80), (0.68, -0.86), (0.64, -0.92), (0.58, -0.945), (0.001, -0.945)]
    nozzle = [(0.10, 1.30), (0.10, 1.08), (0.14, 1.04), (0.68, 0.90), (0.71, 0.86), (0.71, 0.78), (0.69, 0.77),
              (0.67, 0.78), (0.66, 0.84), (0.11, 0.99), (0.07, 1.04), (0.07, 1.30)]
    (folder / "nozzle.obj").write_text(lathe([dish, nozzle]))
    lines = ball_lines(0, 0.062, "0.78 0.80 0.86 1") + ball_lines(1, 0.062, "1 0.55 0.18 1", 0.7)
    lines += ["BGColorConstantColor=0.03 0.035 0.05 1"]
    lines += camera_lines(around(4.9, 1.0, -70, -20), look=(0.0, 0.0, 0.14), angle=32)
    mesh = filter_lines(OBJECT, "Object00", [
        "ObjectType=3", "ImportPath=nozzle.obj", "ShaderType=2", "AmbientConstantColor=0.06 0.07 0.09 1",
        "DiffuseConstantColor=0.34 0.42 0.50 1", "SpecularConstantColor=0.7 0.75 0.8 1"],
        translate=[(0, 0, 0)] * 2, scale=[(1, 1, 1)] * 2)
    return lines + list_lines(1, [mesh])


PARALLEL, SPOT = 3, 1  # as "Type="


def light_lines(lights):
    """Lights: what each is, where it stands over the film, where it looks, how strong it is."""
    lines = ["---AllLightSource", f"LightNumber={len(lights)}"]
    for number, (items, places, look, strength) in enumerate(lights):
        turns = []
        for x, y, z in places:
            ahead = [look[0] - x, look[1] - y, look[2] - z]
            turns.append((0.0, math.degrees(math.atan2(-ahead[2], math.hypot(ahead[0], ahead[1]))),
                          math.degrees(math.atan2(ahead[1], ahead[0]))))
        lines += [f"---LightSRC {number}"] + items
        for group, values, names in (("Translate", places, "xyz"), ("Rotation", turns, "xyz"),
                                     ("Strength", [(strength,)] * 2, ["Strength"])):
            lines += [f"-ParamGroup=LightSRC{number} {group}", f"dimension={len(names)}", "Start"]
            for axis, axis_name in enumerate(names):
                lines += curve(axis_name, [value[axis] for value in values])
    return lines + ["---AllLightSourceEnd"]


def shadow_lines(_folder):
    """The melting crystal over a floor: the evening sun and a lamp that wanders throw its shadows."""
    speeds = [(0.0, 0.20, 0.42, 0.72), (0.35, 0.45, 0.68, 0.80), (0.6, 0.95, 0.82, 0.55), (1.0, 0.95, 0.42, 0.20)]
    lines = []
    for kind in range(4):
        lines += ball_lines(kind, 0.062, "0.8 0.8 0.8 1", 0.3)
        for part in ("Diffuse", "Ambient"):
            prefix = f"SEQ0TYPE{kind}{part}"
            dim = 1.0 if part == "Diffuse" else 0.2
            lines += [f"{prefix}UseColorCurve=1", f"{prefix}ScalingMin=0", f"{prefix}ScalingMax=3",
                      f"{prefix}DependType={VALUE}"]
            lines += colour_lines(prefix, [(stop[0], *(dim * part for part in stop[1:])) for stop in speeds])
    lines += ["BGColorConstantColor=0.05 0.06 0.09 1", "Shadow=1", "ShadowQuality=2", "ShadowLength=60",
              "ShadowDarkness=0.92"]
    lines += camera_lines(around(5.7, 2.4, -110, -40), look=(0.0, 0.0, -0.25), angle=30)
    lines += light_lines([
        ([f"Type={PARALLEL}", "CastShadow=1"], [(-2.4, -1.6, 2.0)] * 2, (0, 0, 0), 0.65),
        ([f"Type={SPOT}", "SpotAngle=32", "CastShadow=1"],
         [(2.6 + 0.4 * k, -2.4 + 0.8 * k, 2.4) for k in range(4)], (0, 0, -0.2), 0.4)])
    floor = filter_lines(OBJECT, "Object00", [
        "ObjectType=0", "ShaderType=2", "AmbientConstantColor=0.06 0.06 0.07 1",
        "DiffuseConstantColor=0.62 0.62 0.66 1", "SpecularConstantColor=0 0 0 1"],
        translate=[(0, 0, -1.25)] * 2, scale=[(9, 9, 0.1)] * 2)
    return lines + list_lines(1, [floor])


def stereo_lines(folder):
    """The copies of the cell for red-cyan glasses: eyes that meet in the middle of them."""
    distance = 6.9
    parallax = distance / 24
    toe_in = math.degrees(math.atan(0.5 * parallax / distance))
    return bond_lines(folder) + [
        "--StereoGram", "StereogramType=2", "StereogramEye=10", f"StereoGramToeInAngle={toe_in:.6f}",
        "SterogramDualOutput=0", "-ParamGroup=Stereogram", "dimension=1", "Start", "Parameter_Distance of Eye",
        "timeDepend=0", "periodic=0", "itemnum 1", f"0.000000000 0 {parallax:.6f} 0.000000 0.000000 "]


def ray_lines(_folder):
    """The cut melt on a dark mirror, with the soft shadows of a large lamp, for POV-Ray."""
    lines = cut_lines(_folder)
    lines = lines[:lines.index("---FilterCtrl0Begin")]
    lines += ["BGColorConstantColor=0.06 0.08 0.12 1"]
    lines += camera_lines(around(5.2, 2.3, -80, -35), look=(0.0, 0.0, -0.28), angle=30)
    lines += light_lines([
        (["Type=0", "CastShadow=1", "LightArea=1", "LightAreaSize=1.5", "LightAreaQuality=5"],
         [(1.5, -4.5, 5.0)] * 2, (0, 0, 0), 0.85),
        ([f"Type={PARALLEL}", "CastShadow=0"], [(-4.0, -2.0, 2.0)] * 2, (0, 0, 0), 0.3)])
    way = [(1.0, -1.0, 1.0)] * 2
    cut = filter_lines(BOOLEAN, "Boolean00", ["OperatorType=1", "RegionType=0", "BorderFactor=0.000000"],
                       translate=way, scale=[(1.5, 1.5, 1.5)] * 2)
    floor = filter_lines(OBJECT, "Object00", [
        "ObjectType=0", "ShaderType=2", "AmbientConstantColor=0.02 0.02 0.03 1",
        "DiffuseConstantColor=0.10 0.11 0.14 1", "SpecularConstantColor=0.2 0.2 0.2 1",
        "ReflectType=1", "ReflectMin=0.10", "ReflectMax=0.45"],
        translate=[(0, 0, -1.06)] * 2, scale=[(14, 14, 0.1)] * 2)
    lines += ["PovCameraWidth=960", "PovCameraHeight=540", "PovAntialias=1", "PovAntiAliasThreshold=0.1",
              "PovDisplay=0", "TimeAnimInterp=1"]
    return lines + list_lines(0, [cut]) + list_lines(1, [floor])


# For POV-Ray: one more project of a set.
RAY = {"lj_melt_text": ("melt_ray", ray_lines, "for POV-Ray: a cut melt on a mirror, with soft shadows")}

# For two eyes: one more project of a set.
STEREO = {"public_pyscal_ni500": ("nickel_stereo", stereo_lines, "for red-cyan glasses")}

# Behind a set: more projects of it.
SCENES = {
    "lj_melt_text": ("melt_cut", cut_lines, "a cut that goes into the melt"),
    "public_pyscal_ni500": ("nickel_bonds", bond_lines,
                            "eight copies of the cell, with bonds through its faces that don't flicker"),
    "lj_melt_bin": ("melt_shadows", shadow_lines, "a floor, and two lights that throw shadows"),
    "deposit_text": ("deposit_mesh", mesh_lines, "the rain with a nozzle and a dish from a mesh file"),
}


def scene(name, setup):
    _, lines, _ = SCENES[name]
    return project(name, setup) + "\n".join(lines(EXAMPLES / name)) + "\n"


def stereo(name, setup):
    return project(name, setup) + "\n".join(STEREO[name][1](EXAMPLES / name)) + "\n"


def ray(name, setup):
    return project(name, setup) + "\n".join(RAY[name][1](EXAMPLES / name)) + "\n"


def write_whole(folder, name, text):
    """From the folder itself: paths stay relative."""
    (folder / name).write_text(text)
    subprocess.run([FILM, "--write-project", name, name], cwd=folder, check=True)


def readme(name, setup):
    more = f" {setup['film']}.mrp is a film of it, with a camera that flies." if "film" in setup else ""
    if name in SCENES:
        more += f" {SCENES[name][0]}.mrp has filters: {SCENES[name][2]}."
    if name in STEREO:
        more += f" {STEREO[name][0]}.mrp is {STEREO[name][2]}."
    if name in RAY:
        more += f" {RAY[name][0]}.mrp is {RAY[name][2]}."
    return (f"{setup['what']}\n"
            f"To open it: File, Open Project, {name}.mrp; FACTS.txt tells what every frame holds.{more}\n"
            f"{setup['origin']}\n")


def main():
    if not FILM.exists():
        sys.exit(f"{FILM} is not there: cmake --build --preset release --target morentis-film")
    for name, setup in SETS.items():
        folder = EXAMPLES / name
        write_whole(folder, f"{name}.mrp", project(name, setup))
        if "film" in setup:
            write_whole(folder, f"{setup['film']}.mrp", film(name, setup))
        if name in SCENES:
            write_whole(folder, f"{SCENES[name][0]}.mrp", scene(name, setup))
        if name in STEREO:
            write_whole(folder, f"{STEREO[name][0]}.mrp", stereo(name, setup))
        if name in RAY:
            write_whole(folder, f"{RAY[name][0]}.mrp", ray(name, setup))
        (folder / "README.md").write_text(readme(name, setup))
    print(f"{len(SETS)} projects written")


if __name__ == "__main__":
    main()
