// The film's camera at the clock, turned to the film's anchor: 0 is the film's begin, 1 its end.
// What stands above this declares the places of both, and how the camera is turned on its way.
#ifndef (CameraViewAngle)
#declare CameraViewAngle = 35; // degrees, of the picture's height
#end
#declare CameraPlace = <Camera_Translate_x, Camera_Translate_y, Camera_Translate_z>;
#declare CameraTurn = <Camera_Rotation_x, Camera_Rotation_y, Camera_Rotation_z>;
#declare CameraAnchor = <Anchor_Translate_x, Anchor_Translate_y, Anchor_Translate_z>;
#if (vlength(CameraAnchor - CameraPlace) < 1e-9)
#declare CameraAnchor = CameraPlace + x; // nothing to turn to
#end
camera {
	perspective
	location CameraPlace
	look_at CameraAnchor
	sky vrotate(z, CameraTurn)
	angle 2*degrees(atan2(tan(radians(CameraViewAngle)/2)*image_width/image_height, 1))
	right -x*image_width/image_height
}
