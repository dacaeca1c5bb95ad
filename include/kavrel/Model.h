// The item model in one include: what a doc-type plug-in builds and pages read.
#pragma once

#include "kavrel/model/Atom.h"
#include "kavrel/model/BaseType.h"
#include "kavrel/model/Block.h"
#include "kavrel/model/Component.h"
#include "kavrel/model/ComponentMember.h"
#include "kavrel/model/Enumeration.h"
#include "kavrel/model/Example.h"
#include "kavrel/model/Item.h"
#include "kavrel/model/ItemList.h"
#include "kavrel/model/MemberTable.h"
#include "kavrel/model/Parameter.h"
#include "kavrel/model/PropertyGroup.h"
#include "kavrel/model/TaggedComment.h"
#include "kavrel/model/TaggedComments.h"
#include "kavrel/model/VBProjectGroup.h"
#include "kavrel/model/vbProject.h"
