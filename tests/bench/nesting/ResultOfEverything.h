// A result with one of everything, and the lines that a dump of it has.

#pragma once

#include <ZORNesting/ZORNestResult.h>

#include <QColor>

/// An outline of layers 0 to 3 with notches.
inline ZORNestResultShape CreateOutline()
{
    QList<ZORNestResultSegment> segments = {
        ZORNestResultSegment::CreateLine({0, 0, 0}, {40, 0, 0}),
        ZORNestResultSegment::CreateArc(ZORNestResultSegment::ArcCounterClockwise, {40, 0, 0}, {40, 20, 0},
                                        {40, 10, 0}),
        ZORNestResultSegment::CreateSpline(
            {ZORNestResultSegment::CreateLine({40, 20, 0}, {30, 20, 0}),
             ZORNestResultSegment::CreateArc(ZORNestResultSegment::ArcClockwise, {30, 20, 0}, {10, 20, 0},
                                             {20, 20, 0}),
             ZORNestResultSegment::CreateLine({10, 20, 0}, {0, 20, 0})}),
        ZORNestResultSegment::CreateArc(ZORNestResultSegment::ArcClockwise, {0, 20, 0}, {0, 0, 0},
                                        {0, 10, 0})};
    for (int layer = 0; layer < 4; ++layer)
        segments[layer].SetLayer(ZORNestResultSegment::Layer(layer));
    segments[0].SetColor(QColor(255, 0, 51));
    segments[0].SetLineStyle(3);
    segments[1].SetColor(QColor(0, 102, 0, 51));
    segments[1].SetLineStyle(-3);
    ZORNestResultShape shape(segments);
    shape.SetShapeStatus(-32768);
    return shape;
}

inline ZORNestResultShape CreateHole()
{
    ZORNestResultSegment circle =
        ZORNestResultSegment::CreateCircle(ZORNestResultSegment::ArcClockwise, {32, 8, 0}, {30, 8, 0});
    circle.SetLayer(ZORNestResultSegment::EtchingData);
    ZORNestResultShape shape({circle});
    shape.SetRawShapeFather(0);
    shape.SetShapeHole(1);
    shape.SetShapeStatus(7);
    return shape;
}

/// Whatever else there is, on layers 5 to 15 and one that is none.
inline ZORNestResultShape CreateMarks()
{
    ZORNestResultSegment text =
        ZORNestResultSegment::CreateText({1, 2, 0}, {31, 2, 0}, QString::fromUtf8("P \"1\"\t\u2116"));
    text.SetTextJustification(ZORNestResultSegment::MiddleCenter);
    text.SetTextHeight(1234567.8);
    text.SetTextAngle(0.1234567);
    text.SetTextWidth(0.8);
    text.SetTextTiltAngle(-1e-7);
    text.SetFont("futu\"ral");
    QList<ZORNestResultSegment> segments = {
        text,
        ZORNestResultSegment::CreateArc(ZORNestResultSegment::ArcCounterClockwise, {5, 0, 0}, {0, 8, 0},
                                        {0, 0, 0}), // ends elsewhere
        ZORNestResultSegment::CreateLine({0, 0, 0}, {-2, 0.5, 0}),
        ZORNestResultSegment::CreateCircle(ZORNestResultSegment::ArcClockwise, {1, 1, 0},
                                           {1, 1, 0}), // no radius
        ZORNestResultSegment::CreateSpline({}),
        ZORNestResultSegment::CreateOther(ZORNestResultSegment::SegmentType(17), {1, 1, 0}, {2, 2, 0}),
        ZORNestResultSegment::CreateOther(ZORNestResultSegment::SegmentType(-2), {2, 2, 0}, {1, 1, 0}),
        ZORNestResultSegment::CreateText({}, {}, QString()),
        ZORNestResultSegment::CreateLine({0, 0, 0}, {3, 4, 0}),
        ZORNestResultSegment::CreateLine({0, 0, 0}, {6, 8, 0}),
        ZORNestResultSegment::CreateLine({0, 0, 0}, {0, 1, 0}),
        ZORNestResultSegment::CreateLine({0, 0, 0}, {1, 0, 0})};
    for (int i = 0; i < 11; ++i)
        segments[i].SetLayer(ZORNestResultSegment::Layer(5 + i));
    segments[11].SetLayer(ZORNestResultSegment::Layer(-1));
    ZORNestResultShape shape(segments);
    shape.SetRawShapeFather(32767);
    shape.SetShapeHole(-1);
    return shape;
}

/// A stack of sheets with two items each; the second one has no shapes.
inline ZORNestResult CreateResultOfEverything()
{
    ZORNestResultItem item(QString::fromUtf8("Rib \"7\"\t\u00e4"));
    item.SetPosition({1.5, -2, 1.0 / 3});
    item.SetOrientation(1.5707963267948966);
    item.SetMirrored(true);
    item.SetPartName("Rib");
    item.SetAssemblyName("Wing");
    item.SetSubassemblyName("Box");
    item.SetJobName("J-7");
    item.SetComment("a\nb");
    for (const ZORNestResultShape& shape :
         {CreateOutline(), CreateHole(), CreateMarks(), ZORNestResultShape()})
        item.AddShape(shape);
    ZORNestResult result(ZORNestResult::Translation);
    result.SetStackSize(5); // the dump has nothing on it
    result.AddItem(item);
    result.AddItem(ZORNestResultItem());
    return result;
}

// By hand: the outline encloses 40 * 20 + (1 - 1 - 1) * 50 pi; a half circle of radius 10 to 0.001 takes
// pi / (2 acos(0.9999)) * 2 = 111.1 steps, thus 112. Two blanks stand behind most names, one at the end of
// "Segments: ", "Points: " and "Spline Types: ".
const char* const kDumpOfEverything = R"dump(
	Number of Items:  2
	Type of result:  translation
	Items Dump below
	========================================================
		Item Name:  "Rib \"7\"\tä"
		Position:  "(1.500, -2.000, 0.333)"
		Orientation:  1.5708
		Is Mirrored:  true
		Part Name:  "Rib"
		Assembly Name:  "Wing"
		Subassembly Name:  "Box"
		Job Name:  "J-7"
		Comment:  "a\nb"
		Number of Shapes:  4
		Shape Dump Below
		========================================================
			Shape #:  0
			Area:  642.92
			Perimeter:  154.248
			Bounding Box:  "(0.000, 0.000, 0.000)" | "(50.000, 20.000, 0.000)"
			Center of Mass:  "(29.773, 8.594, 0.000)"
			Shape Father:  -1
			Shape Hole:  0
			Shape Status:  -32768
			Number of Segments:  4
			========================================================
				Segment #:  0
				Type: line
				Start Point:  "(0.000, 0.000, 0.000)"
				End Point:  "(40.000, 0.000, 0.000)"
				Color:  QColor(ARGB 1, 1, 0, 0.2)
				Layer: automatic
				Line Style:  3
			-----------------------------------------------------
				Segment #:  1
				Type: arc
				Orientation:  counter-clockwise
				Center:  "(40.000, 10.000, 0.000)"
				Radius:  10
				Start Angle:  4.71239
				Start Param:  0.75
				End Angle:  1.5708
				End Param:  0.25
				Color:  QColor(ARGB 0.2, 0, 0.4, 0)
				Layer: nest
				Line Style:  -3
			-----------------------------------------------------
				Segment #:  2
				Type: spline
				Number of Points:  115
				Segments: 
					 1 Type:  "line"  -  "(40.000, 20.000, 0.000)"  -  "(30.000, 20.000, 0.000)" ""
					 2 Type:  "arc"  -  "(30.000, 20.000, 0.000)"  -  "(10.000, 20.000, 0.000)" " - (20.000, 20.000, 0.000)"
					 3 Type:  "line"  -  "(10.000, 20.000, 0.000)"  -  "(0.000, 20.000, 0.000)" ""
				Points: 
					 1 "(40.000, 20.000, 0.000)"
					 2 "(30.000, 20.000, 0.000)"
					 3 "(10.000, 20.000, 0.000)"
					 4 "(0.000, 20.000, 0.000)"
				Spline Types: 
					 1 Type:  0
					 2 Type:  1
					 3 Type:  0
				Color:  QColor(Invalid)
				Layer: tabs
				Line Style:  0
			-----------------------------------------------------
				Segment #:  3
				Type: arc
				Orientation:  clockwise
				Center:  "(0.000, 10.000, 0.000)"
				Radius:  10
				Start Angle:  1.5708
				Start Param:  0.25
				End Angle:  4.71239
				End Param:  0.75
				Color:  QColor(Invalid)
				Layer: etch box
				Line Style:  0
			-----------------------------------------------------
		-----------------------------------------------------
			Shape #:  1
			Area:  12.5664
			Perimeter:  12.5664
			Bounding Box:  "(28.000, 6.000, 0.000)" | "(32.000, 10.000, 0.000)"
			Center of Mass:  "(30.000, 8.000, 0.000)"
			Shape Father:  0
			Shape Hole:  1
			Shape Status:  7
			Number of Segments:  1
			========================================================
				Segment #:  0
				Type: arc
				Orientation:  clockwise
				Center:  "(30.000, 8.000, 0.000)"
				Radius:  2
				Start Angle:  0
				Start Param:  0
				End Angle:  0
				End Param:  0
				Color:  QColor(Invalid)
				Layer: etching data
				Line Style:  0
			-----------------------------------------------------
		-----------------------------------------------------
			Shape #:  2
			Area:  0
			Perimeter:  27.854
			Bounding Box:  "(-2.000, 0.000, 0.000)" | "(31.000, 8.000, 0.000)"
			Center of Mass:  "(2.262, 3.411, 0.000)"
			Shape Father:  32767
			Shape Hole:  -1
			Shape Status:  0
			Number of Segments:  12
			========================================================
				Segment #:  0
				Type: Text
				Start Point:  "(1.000, 2.000, 0.000)"
				End Point:  "(31.000, 2.000, 0.000)"
				Text:  "P \"1\"\t№"
				Justification:  7
				Height:  1.23457e+06
				Angle:  0.123457
				Width:  0.8
				Tilt Angle:  -1e-07
				Font:  "futu\"ral"
				Color:  QColor(Invalid)
				Layer: non-nestable
				Line Style:  0
			-----------------------------------------------------
				Segment #:  1
				Type: arc
				Orientation:  counter-clockwise
				Center:  "(0.000, 0.000, 0.000)"
				Radius:  5
				Start Angle:  0
				Start Param:  0
				Color:  QColor(Invalid)
				Layer: extra
				Line Style:  0
			-----------------------------------------------------
				Segment #:  2
				Type: line
				Start Point:  "(0.000, 0.000, 0.000)"
				End Point:  "(-2.000, 0.500, 0.000)"
				Color:  QColor(Invalid)
				Layer: lead out
				Line Style:  0
			-----------------------------------------------------
				Segment #:  3
				Type: arc
				Orientation:  clockwise
				Center:  "(1.000, 1.000, 0.000)"
				Radius:  0
				Color:  QColor(Invalid)
				Layer: lead in
				Line Style:  0
			-----------------------------------------------------
				Segment #:  4
				Type: spline
				Number of Points:  0
				Segments: 
				Points: 
				Spline Types: 
				Color:  QColor(Invalid)
				Layer: line string
				Line Style:  0
			-----------------------------------------------------
				Segment #:  5
				Color:  QColor(Invalid)
				Layer: grid string
				Line Style:  0
			-----------------------------------------------------
				Segment #:  6
				Color:  QColor(Invalid)
				Layer: auto nibble
				Line Style:  0
			-----------------------------------------------------
				Segment #:  7
				Type: Text
				Start Point:  "(0.000, 0.000, 0.000)"
				End Point:  "(0.000, 0.000, 0.000)"
				Text:  ""
				Justification:  0
				Height:  10
				Angle:  0
				Width:  1
				Tilt Angle:  0
				Font:  ""
				Color:  QColor(Invalid)
				Layer: auto bridge
				Line Style:  0
			-----------------------------------------------------
				Segment #:  8
				Type: line
				Start Point:  "(0.000, 0.000, 0.000)"
				End Point:  "(3.000, 4.000, 0.000)"
				Color:  QColor(Invalid)
				Line Style:  0
			-----------------------------------------------------
				Segment #:  9
				Type: line
				Start Point:  "(0.000, 0.000, 0.000)"
				End Point:  "(6.000, 8.000, 0.000)"
				Color:  QColor(Invalid)
				Layer: grain
				Line Style:  0
			-----------------------------------------------------
				Segment #:  10
				Type: line
				Start Point:  "(0.000, 0.000, 0.000)"
				End Point:  "(0.000, 1.000, 0.000)"
				Color:  QColor(Invalid)
				Line Style:  0
			-----------------------------------------------------
				Segment #:  11
				Type: line
				Start Point:  "(0.000, 0.000, 0.000)"
				End Point:  "(1.000, 0.000, 0.000)"
				Color:  QColor(Invalid)
				Line Style:  0
			-----------------------------------------------------
		-----------------------------------------------------
			Shape #:  3
			Area:  0
			Perimeter:  0
			Bounding Box:  "(0.000, 0.000, 0.000)" | "(0.000, 0.000, 0.000)"
			Center of Mass:  "(0.000, 0.000, 0.000)"
			Shape Father:  -1
			Shape Hole:  0
			Shape Status:  0
			Number of Segments:  0
			========================================================
		-----------------------------------------------------
	-----------------------------------------------------
		Item Name:  ""
		Position:  "(0.000, 0.000, 0.000)"
		Orientation:  0
		Is Mirrored:  false
		Part Name:  ""
		Assembly Name:  ""
		Subassembly Name:  ""
		Job Name:  ""
		Comment:  ""
		Number of Shapes:  0
		Shape Dump Below
		========================================================
	-----------------------------------------------------
)dump";
