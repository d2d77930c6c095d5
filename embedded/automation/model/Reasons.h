#pragma once

// Why properties cannot be changed.
//
// One sentence for each reason, which stands in the tables of all classes that it holds for. It is read after what the
// property is ("Length of the line. It follows ..."), which is what its "it" means.

namespace velt::automation {

struct Reason {
  const wchar_t* sentence;
};

namespace reasons {

// clang-format off

// It follows from something that can be changed itself.
inline constexpr Reason followsFromThem                  = {L"It is counted or measured, and cannot be set."};
inline constexpr Reason followsFromPoints                = {L"It follows from the points."};
inline constexpr Reason followsFromVertices              = {L"It follows from the vertices."};
inline constexpr Reason followsFromControlPoints         = {L"It follows from the control points."};
inline constexpr Reason followsFromKnots                 = {L"It follows from the knots."};
inline constexpr Reason followsFromCorners               = {L"It follows from the corners."};
inline constexpr Reason followsFromBoundary              = {L"It follows from the boundary, and so from the entities that an associative hatch was made from."};
inline constexpr Reason followsFromOutline               = {L"It follows from the outline."};
inline constexpr Reason followsFromBoth                  = {L"It follows from the start and the end."};
inline constexpr Reason followsFromItsEnds               = {L"It follows from where it starts and ends."};
inline constexpr Reason followsFromRadiusAndAngles       = {L"It follows from radius and angles."};
inline constexpr Reason followsFromCenterRadiusAndAngle  = {L"It follows from center, radius and angle."};
inline constexpr Reason followsFromLongAxis              = {L"It follows from the major axis and the radius ratio."};
inline constexpr Reason followsFromAxesAndStart          = {L"It follows from the axes and the start parameter."};
inline constexpr Reason followsFromAxesAndEnd            = {L"It follows from the axes and the end parameter."};
inline constexpr Reason followsFromHeightAndFactor       = {L"It follows from height and factor."};
inline constexpr Reason followsFromBasePointAndDirection = {L"It follows from base point and direction."};
inline constexpr Reason isScaleInAnotherForm             = {L"It is the scale in another form."};
inline constexpr Reason followsFromPatternName           = {L"It follows from the name of the pattern."};

// Something else would have to change with it.
inline constexpr Reason measurementWouldFollow          = {L"What the dimension measures and how it looks would have to change with it, which is not done here."};
inline constexpr Reason positionAndRotationWouldFollow  = {L"Position and rotation would have to change with it, which is not done here."};
inline constexpr Reason directionWouldFollow            = {L"The direction would have to change with it, which is not done here."};
inline constexpr Reason centerWouldFollow               = {L"The center would have to change with it, which is not done here."};
inline constexpr Reason centerAndAnglesWouldFollow      = {L"Center and angles would have to change with it, which is not done here."};
inline constexpr Reason viewCenterWouldFollow           = {L"The center of the view would have to change with it, which is not done here."};
inline constexpr Reason axesWouldFollow                 = {L"The axes would have to change with it, which is not done here."};
inline constexpr Reason planeWouldFollow                = {L"The plane would have to change with it, which is not done here."};
inline constexpr Reason endsWouldFollow                 = {L"The ends would have to change with it, which is not done here."};
inline constexpr Reason pointsWouldFollow               = {L"The points would have to change with it, which is not done here."};
inline constexpr Reason cornersWouldFollow              = {L"The corners would have to change with it, which is not done here."};
inline constexpr Reason edgesWouldFollow                = {L"The edges would have to change with it, which is not done here."};
inline constexpr Reason bothEdgesWouldFollow            = {L"Both edges would have to change with it, which is not done here."};
inline constexpr Reason verticesWouldFollow             = {L"The vertices would have to change with it, which is not done here."};
inline constexpr Reason controlPointsWouldFollow        = {L"The control points would have to change with it, which is not done here."};
inline constexpr Reason controlPointsWouldFollowThem    = {L"The control points would have to change with them, which is not done here."};
inline constexpr Reason fitPointsWouldFollow            = {L"Fit points would have to change with it, which is not done here."};
inline constexpr Reason fitPointsAndTangentsWouldFollow = {L"Fit points and tangents would have to change with them, which is not done here."};
inline constexpr Reason boundaryWouldMove               = {L"The entities that the hatch follows would have to move with it; it no longer follows once Associative is No."};
inline constexpr Reason boundaryWouldFollow             = {L"The boundary would have to change with it, which is not done here."};
inline constexpr Reason clippingBoundaryWouldFollow     = {L"The boundary of a clipped one would have to change with it, which is not done here."};
inline constexpr Reason patternLinesWouldFollow         = {L"The lines of the pattern would have to change with it, which is not done here."};
inline constexpr Reason endWouldLeaveText               = {L"The end would leave the text that it leads to."};
inline constexpr Reason referencesWouldGainOrLoseIt     = {L"References would have to gain or lose it."};

// Something would have to be made or found that is not made or looked for here.
inline constexpr Reason boundaryWouldBeMade              = {L"The boundary would have to be made, which is not done here."};
inline constexpr Reason boundaryWouldBeFound             = {L"The boundary would have to be found, which is not done here."};
inline constexpr Reason entityWouldBeFound               = {L"The entity that is the boundary would have to be found, which is not done here."};
inline constexpr Reason smoothVerticesWouldBeMade        = {L"The vertices that smooth it would have to be made, which is not done here."};
inline constexpr Reason knotsAndControlPointsWouldBeMade = {L"Knots and control points would have to be made, which is not done here."};
inline constexpr Reason theirCellsWouldBeMade            = {L"Their cells would have to be made, which is not done here."};
inline constexpr Reason boxWouldBeMade                   = {L"Size and color of the box would have to be made, which is not done here."};
inline constexpr Reason theseWouldBeMade                 = {L"The coordinate axes would have to be made, which is not done here."};
inline constexpr Reason modellerWritesIt                 = {L"Only a program that models solids can write it."};
inline constexpr Reason modellerMakesThem                = {L"Only a program that models solids can make them."};
inline constexpr Reason madeElsewhere                    = {L"It is only shown here; CAD programs can edit it."};

// The drawing stores it in a second place, or in a way that leaves no choice.
inline constexpr Reason storedWithLines              = {L"Each line stores its own value of it, which would not change."};
inline constexpr Reason tableLooksStored             = {L"The table is drawn by a block, which is not drawn anew here."};
inline constexpr Reason linesStored                  = {L"The lines are stored and would stay what they are."};
inline constexpr Reason jointsStored                 = {L"The joints are stored and would stay what they are."};
inline constexpr Reason nearestColorStored           = {L"It is stored a second time as the nearest color of the index."};
inline constexpr Reason boundaryStoredForStyle       = {L"The stored boundary is the one of this style."};
inline constexpr Reason storedAgainstEdges           = {L"They are stored relative to the edges of the picture."};
inline constexpr Reason storedSeveralTimes           = {L"Newer drawings store it several times, and all would have to agree."};
inline constexpr Reason styleBesideIt                = {L"Newer drawings store a visual style beside it, which would stay what it is."};
inline constexpr Reason numbersWouldDiffer           = {L"The drawing stores it twice, and both would have to agree."};
inline constexpr Reason coordinatesDependOnEachOther = {L"Its coordinates depend on each other."};
inline constexpr Reason ownRulesOfDrawing            = {L"Programs draw it by rules of their own."};
inline constexpr Reason placeDependsOnStyle          = {L"Where it can be chosen depends on the style."};

// It is not the entity's own.
inline constexpr Reason belongsToBlock           = {L"It belongs to the block."};
inline constexpr Reason belongsToSharedBlock     = {L"It belongs to the block, which other references may show."};
inline constexpr Reason belongsToReference       = {L"It belongs to the reference."};
inline constexpr Reason belongsToSheet           = {L"It belongs to the sheet."};
inline constexpr Reason attributesBelongToBlock  = {L"The attributes belong to the block."};
inline constexpr Reason asTheName                = {L"It belongs to the block, as the name does."};
inline constexpr Reason blockHasSameName         = {L"The block has the same name for it."};
inline constexpr Reason referencesHaveSameName   = {L"The references of the block have the same name for it."};
inline constexpr Reason otherImagesMayShowIt     = {L"Other images may show the same."};
inline constexpr Reason otherUnderlaysMayShowIt  = {L"Other underlays may show the same."};
inline constexpr Reason dataOfAnotherApplication = {L"It stands in data of another application."};
inline constexpr Reason fileOutsideOfDrawing     = {L"The file stands outside of the drawing."};
inline constexpr Reason stylesOutsideOfDrawing   = {L"Plot styles are defined in a file of their own, not in the drawing."};
inline constexpr Reason tablesOutsideOfDrawing   = {L"The tables stand outside of the drawing."};

// It makes the entity what it is.
inline constexpr Reason neverChanges           = {L"It never changes."};
inline constexpr Reason anotherKindOfReference = {L"A block reference with rows and columns is another type of entity."};
inline constexpr Reason entityOfItsOwn         = {L"What the leader leads to is an entity of its own."};
inline constexpr Reason facesAreMadeOfThem     = {L"The faces of the mesh are made of them."};
inline constexpr Reason thicknessBelongsToIt   = {L"The thickness belongs to it."};
inline constexpr Reason protectsWhatIsRead     = {L"It protects the view that is shown here."};

// For some entities only: see Obstacle.
inline constexpr Reason pictureWouldStay      = {L"The dimension is drawn by a block, which is not drawn anew here."};
inline constexpr Reason pictureShared         = {L"Another dimension is drawn by the same block."};
inline constexpr Reason pictureLooksOtherwise = {L"The block that draws the dimension does not look as its style says."};
inline constexpr Reason pictureTextHasColors  = {L"The text in the block that draws the dimension has colors of its own."};
inline constexpr Reason pictureTextUnknown    = {L"In the block that draws the dimension its text cannot be recognised."};
inline constexpr Reason pictureLinesUnknown   = {L"In the block that draws the dimension, dimension lines and extension lines cannot be told apart."};
inline constexpr Reason leaderTextWouldMove   = {L"The text that the leader leads to would have to move."};
inline constexpr Reason filledWithGradient    = {L"A gradient fills the hatch, which has no lines; it has a gradient name instead."};
inline constexpr Reason smoothed              = {L"The polyline is smoothed, and its curve would have to be computed anew, which is not done here."};
inline constexpr Reason justifiedLeft         = {L"The text is justified left, so that only its position counts."};
inline constexpr Reason severalLines          = {L"The attribute has several lines, which are stored a second time."};
inline constexpr Reason followedByHatch       = {L"A hatch follows the entity, and its boundary is not made of whole pieces of it, so that it would have to be found anew; the hatch no longer follows once its Associative is No."};
inline constexpr Reason hatchWouldNotClose    = {L"A hatch follows the entity, and its boundary would be open, cross itself or leave its plane; the hatch no longer follows once its Associative is No."};
inline constexpr Reason followedByLockedHatch = {L"A hatch on a locked layer follows the entity, and would have to change with it."};
inline constexpr Reason followedByDimension   = {L"A dimension follows the entity, and would have to be made anew."};
inline constexpr Reason followedByLeader      = {L"A leader follows the entity, and would have to be made anew."};
inline constexpr Reason annotative            = {L"The entity is annotative: its place and size are stored for every scale."};
inline constexpr Reason madeByField           = {L"The wording is made by a field."};

// clang-format on

}  // namespace reasons
}  // namespace velt::automation
