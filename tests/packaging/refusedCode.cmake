# What the host's declarations refuse, one fact a case: refuse(<fact> <parameters> <faulty line> <control line> <error>).
#
# The line stands in a function with these parameters. The error is a regular expression for what gcc and clang say of
# the faulty line; the control line does, as far as it can, what the faulty one is after.

set(constness "discards qualifiers|not marked const|drops 'const'|no matching|cannot bind|cannot convert")
set(no_iterator "iterator_traits|iterator_category|no matching|no type named|no match for|invalid operands")

# Constness

refuse(indices_of_constant_plug [[MPlug& plug, MIntArray& indices]]
  [[std::as_const(plug).getExistingArrayAttributeIndices(indices);]]
  [[plug.getExistingArrayAttributeIndices(indices);]] "${constness}")
refuse(child_by_constant_attribute [[const MPlug& plug, MObject& attribute]]
  [[plug.child(std::as_const(attribute));]]
  [[plug.child(attribute);]] "${constness}")
refuse(edges_of_constant_object [[MObject& mesh]]
  [[MItMeshEdge edge(std::as_const(mesh));]]
  [[MItMeshEdge edge(mesh);]] "${constness}")
refuse(vertices_of_constant_object [[MObject& mesh]]
  [[MItMeshVertex vertex(std::as_const(mesh));]]
  [[MItMeshVertex vertex(mesh);]] "${constness}")
refuse(edges_of_constant_component [[const MDagPath& mesh, MObject& component]]
  [[MItMeshEdge edge(mesh, std::as_const(component));]]
  [[MItMeshEdge edge(mesh, component);]] "${constness}")
refuse(vertices_of_constant_component [[const MDagPath& mesh, MObject& component]]
  [[MItMeshVertex vertex(mesh, std::as_const(component));]]
  [[MItMeshVertex vertex(mesh, component);]] "${constness}")
refuse(faces_of_constant_component [[const MDagPath& mesh, MObject& component]]
  [[MItMeshPolygon face(mesh, std::as_const(component));]]
  [[MItMeshPolygon face(mesh, component);]] "${constness}")
refuse(faces_again_of_constant_component [[MItMeshPolygon& face, const MDagPath& mesh, MObject& component]]
  [[face.reset(mesh, std::as_const(component));]]
  [[face.reset(mesh, component);]] "${constness}")
refuse(neighbours_at_constant_vertex [[MItMeshVertex& vertex, MIntArray& list]]
  [[std::as_const(vertex).getConnectedVertices(list);]]
  [[vertex.getConnectedVertices(list);]] "${constness}")
refuse(edges_at_constant_vertex [[MItMeshVertex& vertex, MIntArray& list]]
  [[std::as_const(vertex).getConnectedEdges(list);]]
  [[vertex.getConnectedEdges(list);]] "${constness}")
refuse(faces_at_constant_vertex [[MItMeshVertex& vertex, MIntArray& list]]
  [[std::as_const(vertex).getConnectedFaces(list);]]
  [[vertex.getConnectedFaces(list);]] "${constness}")
refuse(vertices_of_constant_face [[MItMeshPolygon& face, MIntArray& list]]
  [[std::as_const(face).getVertices(list);]]
  [[face.getVertices(list);]] "${constness}")
refuse(edges_of_constant_face [[MItMeshPolygon& face, MIntArray& list]]
  [[std::as_const(face).getEdges(list);]]
  [[face.getEdges(list);]] "${constness}")
refuse(colors_of_constant_mesh [[MFnMesh& mesh, MColorArray& colors]]
  [[std::as_const(mesh).getVertexColors(colors);]]
  [[mesh.getVertexColors(colors);]] "${constness}")
refuse(constant_vertex_color [[MFnMesh& mesh, MColor& color]]
  [[mesh.setVertexColor(std::as_const(color), 0);]]
  [[mesh.setVertexColor(color, 0);]] "${constness}")
refuse(constant_plug_data [[MDGModifier& modifier, const MPlug& plug, MObject& data]]
  [[modifier.newPlugValue(plug, std::as_const(data));]]
  [[modifier.newPlugValue(plug, data);]] "${constness}")
refuse(constant_point_of_data [[MFnPointArrayData& data, MPoint& point]]
  [[data.set(std::as_const(point), 0);]]
  [[data.set(point, 0);]] "${constness}")
refuse(weights_of_constant_influences
  [[MFnSkinCluster& skin, const MDagPath& mesh, const MObject& component, MIntArray& influences, MDoubleArray& weights]]
  [[skin.getWeights(mesh, component, std::as_const(influences), weights);]]
  [[skin.getWeights(mesh, component, influences, weights);]] "${constness}")
refuse(points_of_constant_skin
  [[MFnSkinCluster& skin, const MDagPath& influence, MSelectionList& points, MDoubleArray& weights]]
  [[std::as_const(skin).getPointsAffectedByInfluence(influence, points, weights);]]
  [[skin.getPointsAffectedByInfluence(influence, points, weights);]] "${constness}")
refuse(change_of_cursor [[const MCursor& cursor]]
  [[MCursor::editCursor = cursor;]]
  [[MCursor own(MCursor::editCursor); own = cursor;]] "${constness}|no viable")

# Arrays and their iterators

refuse(search_in_array [[const MIntArray& array]]
  [[std::lower_bound(array.begin(), array.end(), 3);]]
  [[for (const int number : array) static_cast<void>(number);]] "${no_iterator}")
refuse(test_of_array [[const MDoubleArray& array]]
  [[std::any_of(array.begin(), array.end(), [](double number) { return number > 1.0; });]]
  [[for (const double number : array) static_cast<void>(number);]] "${no_iterator}")
refuse(sorting_of_array [[MIntArray& array]]
  [[std::sort(array.begin(), array.end());]]
  [[for (int& number : array) number = 0;]] "${no_iterator}")
refuse(vector_from_array [[const MIntArray& array]]
  [[const std::vector<int> copy(array.begin(), array.end());]]
  [[std::vector<int> copy(array.length()); array.get(copy.data());]] "${no_iterator}")
refuse(iterator_arithmetic [[MPointArray& points]]
  [[auto second = points.begin() + 1;]]
  [[auto second = points.begin(); ++second;]] "${no_iterator}")
refuse(iterator_step_after_use [[const MFloatPointArray& points]]
  [[auto point = points.begin(); point++;]]
  [[auto point = points.begin(); ++point;]] "no 'operator\\+\\+\\(int\\)'|cannot increment")
refuse(comparison_of_constant_iterator [[const MStringArray& texts]]
  [[const auto text = texts.begin(); static_cast<void>(text == texts.end());]]
  [[auto text = texts.begin(); static_cast<void>(text == texts.end());]] "${constness}|${no_iterator}")
refuse(element_at_constant_iterator [[const MColorArray& colors]]
  [[const auto color = colors.begin(); static_cast<void>(*color);]]
  [[auto color = colors.begin(); static_cast<void>(*color);]] "${constness}|${no_iterator}|indirection requires")
refuse(address_of_text_in_constant_array [[const MStringArray& texts]]
  [[const MString* text = &texts[0];]]
  [[const MString text = texts[0];]] "taking (the )?address of")
refuse(copy_of_texts [[MStringArray& texts, const MStringArray& others]]
  [[texts.copy(others);]]
  [[texts = others;]] "no member named 'copy'")
refuse(texts_without_value [[]]
  [[MStringArray texts(3);]]
  [[MStringArray texts(3, "");]] "no matching")
refuse(paths_without_value [[const MDagPath& path]]
  [[MDagPathArray paths(3);]]
  [[MDagPathArray paths(3, path);]] "no matching")
refuse(plugs_without_value [[const MPlug& plug]]
  [[MPlugArray plugs(3);]]
  [[MPlugArray plugs(3, plug);]] "no matching")
refuse(points_into_points [=[const MPointArray& points, MPoint* list, double (*rows)[4]]=]
  [[points.get(list);]]
  [[points.get(rows);]] "no matching")
refuse(colors_into_colors [=[const MColorArray& colors, MColor* list, float (*rows)[4]]=]
  [[colors.get(list);]]
  [[colors.get(rows);]] "no matching|cannot convert|cannot initialize")

# Copies and objects that must not be made

refuse(copy_of_function_set [[const MFnMesh& mesh]]
  [[MFnMesh copy(mesh);]]
  [[MFnMesh copy(mesh.object());]] "deleted|private")
refuse(copy_of_modifier [[MDagModifier& modifier]]
  [[MDagModifier copy(modifier);]]
  [[MDagModifier& copy(modifier);]] "deleted|private")
refuse(object_of_global [[]]
  [[MGlobal global;]]
  [[MGlobal::clearSelectionList();]] "is private|private destructor")
refuse(plain_function_set [[]]
  [[MFnBase plain;]]
  [[MFnDependencyNode plain;]] "is protected|protected constructor")

# Arguments and results

refuse(deformer_as_filter [[MFnBlendShapeDeformer& deformer, MObjectArray& shapes]]
  [[deformer.getOutputGeometry(shapes);]]
  [[deformer.getBaseObjects(shapes);]] "no member named 'getOutputGeometry'")
refuse(name_for_any_instance [[const MFnMesh& mesh]]
  [[mesh.currentColorSetName(MFnMesh::kInstanceUnspecified);]]
  [[mesh.currentColorSetName();]] "kInstanceUnspecified")
refuse(removed_colors_with_modifier [[MFnMesh& mesh, MIntArray& vertices, MDGModifier& modifier]]
  [[mesh.removeVertexColors(vertices, &modifier);]]
  [[mesh.removeVertexColors(vertices);]] "no matching|too many arguments")
refuse(color_set_without_instances [[MFnMesh& mesh, MStatus& status]]
  [[mesh.createColorSetWithName("paint", nullptr, &status);]]
  [[mesh.createColorSetWithName("paint", nullptr, nullptr, &status);]] "no matching|cannot convert|cannot initialize")
refuse(error_with_line_number [[]]
  [[MGlobal::displayError("text", true);]]
  [[MGlobal::displayError("text");]] "no matching|too many arguments")
refuse(warning_with_line_number [[]]
  [[MGlobal::displayWarning("text", true);]]
  [[MGlobal::displayWarning("text");]] "no matching|too many arguments")
refuse(result_of_removed_variable [[]]
  [[const bool wasThere = MGlobal::removeOptionVar("name");]]
  [[MGlobal::removeOptionVar("name");]] "void")
refuse(color_from_one_number [[]]
  [[MColor grey(0.5F);]]
  [[MColor grey(0.5F, 0.5F, 0.5F);]] "no matching")
refuse(color_from_numbers [[const float* numbers]]
  [[MColor color(numbers);]]
  [[MColor color(numbers[0], numbers[1], numbers[2]);]] "no matching")
refuse(status_of_cartesian_point [[MPoint& point]]
  [[const MStatus status = point.cartesianize();]]
  [[const MPoint& same = point.cartesianize();]] "conversion from|no viable conversion|cannot convert")
refuse(single_precision_of_vector [[const MVector& vector, float* singles, double* doubles]]
  [[vector.get(singles);]]
  [[vector.get(doubles);]] "no matching|cannot convert|cannot initialize")
refuse(double_precision_of_vector [[const MFloatVector& vector, float* singles, double* doubles]]
  [[vector.get(doubles);]]
  [[vector.get(singles);]] "no matching|cannot convert|cannot initialize")
refuse(status_of_cleared_text [[MString& text]]
  [[const MStatus status = text.clear();]]
  [[text.clear();]] "void")
refuse(path_as_result [[const MObject& node, MDagPath& path]]
  [[path = MDagPath::getAPathTo(node);]]
  [[MDagPath::getAPathTo(node, path);]] "no matching|too few arguments")
refuse(count_of_edges_without_sign [[MItMeshEdge& edge]]
  [[const unsigned int count{edge.count()};]]
  [[const int count{edge.count()};]] "narrow")
refuse(count_of_vertices_without_sign [[MItMeshVertex& vertex]]
  [[const unsigned int count{vertex.count()};]]
  [[const int count{vertex.count()};]] "narrow")
refuse(corner_with_sign [[MItMeshPolygon& face]]
  [[const int vertex{face.vertexIndex(0)};]]
  [[const unsigned int vertex{face.vertexIndex(0)};]] "narrow")
refuse(number_of_type_on_stream [[std::ostream& out, const MTypeId& type]]
  [[out << type;]]
  [[out << type.id();]] "no match|invalid operands")

# Names

refuse(header_of_space [[]]
  [[#include <maya/MSpace.h>]]
  [[#include <maya/MTypes.h>]] "MSpace.h")
refuse(network_nodes [[const MObject& node]]
  [[node.hasFn(MFn::kNetwork);]]
  [[node.hasFn(MFn::kDependencyNode);]] "kNetwork")
refuse(deformable_shapes [[const MObject& node]]
  [[node.hasFn(MFn::kDeformableShape);]]
  [[node.hasFn(MFn::kShape);]] "kDeformableShape")
refuse(right_mouse_button [[MEvent& event]]
  [[static_cast<void>(event.mouseButton() == MEvent::kRightMouse);]]
  [[static_cast<void>(event.mouseButton() == MEvent::kMiddleMouse);]] "kRightMouse")
# clang does not look for names in the bases of a class.
if(NOT CXX_COMPILER_ID MATCHES "Clang")
  refuse(local_called_command [[]]
    [[struct Call : MPxCommand { MStatus redoIt() override { const MString command("undo"); return MGlobal::executeCommand(command); } };]]
    [[struct Call : MPxCommand { MStatus redoIt() override { const MString text("undo"); return MGlobal::executeCommand(text); } };]]
    "'command' shadows")
  refuse(local_called_instance [[]]
    [[struct Call : MPxCommand { bool isUndoable() const override { const bool instance = true; return instance; } };]]
    [[struct Call : MPxCommand { bool isUndoable() const override { const bool answer = true; return answer; } };]]
    "'instance' shadows")
endif()
