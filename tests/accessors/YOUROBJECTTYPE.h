#pragma once

// The application's object, which the conversion skeleton names so until it is told better.
class YOUROBJECTTYPE
{
};
