#pragma once

#include <maya/MFnBase.h>
#include <maya/MPlug.h>
#include <maya/MString.h>
#include <maya/MTypes.h>

OPENMAYA_MAJOR_NAMESPACE_OPEN

/// A node of the dependency graph: its name, attributes, plugs and connections.
class OPENMAYA_EXPORT MFnDependencyNode : public MFnBase {
  public:
    enum MAttrClass { kLocalDynamicAttr = 1, kNormalAttr, kExtensionAttr, kInvalidAttr };

    MFnDependencyNode();
    MFnDependencyNode(MObject& object, MStatus* status = nullptr);
    MFnDependencyNode(const MObject& object, MStatus* status = nullptr);
    ~MFnDependencyNode() override;
    MFn::Type type() const override;

    MObject create(const MString& typeName, MStatus* status = nullptr);
    MObject create(const MString& typeName, const MString& name, MStatus* status = nullptr);

    MString typeName(MStatus* status = nullptr) const;
    MString name(MStatus* status = nullptr) const;
    /// The full name with the root namespace first: ":pSphereShape1".
    MString absoluteName(MStatus* status = nullptr) const;
    bool hasUniqueName() const;
    /// @return the name of the node: made unique if the wanted one is taken
    MString setName(const MString& name, bool createNamespace = false, MStatus* status = nullptr);

    /// Every plug of the node that has an incoming or outgoing connection.
    MStatus getConnections(MPlugArray& array) const;
    MObject attribute(const MString& attributeName, MStatus* status = nullptr) const;
    MAttrClass attributeClass(const MObject& attribute, MStatus* status = nullptr) const;
    bool hasAttribute(const MString& name, MStatus* status = nullptr) const;
    MPlug findPlug(const MString& attributeName, bool wantNetworkedPlug, MStatus* status = nullptr) const;
    MPlug findPlug(const MObject& attribute, bool wantNetworkedPlug, MStatus* status = nullptr) const;

    bool setAlias(const MString& alias, const MString& name, const MPlug& plug, bool add = true,
                  MStatus* status = nullptr);
    bool findAlias(const MString& alias, MObject& attribute, MStatus* status = nullptr) const;
    /// Alias and attribute name in turn.
    bool getAliasList(MStringArray& strings, MStatus* status = nullptr);
    MString plugsAlias(const MPlug& plug, MStatus* status = nullptr);
};

OPENMAYA_MAJOR_NAMESPACE_CLOSE
