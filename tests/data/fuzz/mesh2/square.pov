//normal_start_at=0000000123
#declare M=mesh2{
	vertex_vectors{
		4,
		<0,0,0>,
		<1,0,0>,
		<1,1,0>,
		<0,1e-3,-.5>
	}
	normal_vectors{
		4,
		<0,0,1>,<0,0,1>,<0,0,1>,<0,0,1>
	}
	face_indices{
		2,
		<0,1,2>,<0,2,3>
	}
	normal_indices{ 2, <0,1,2>,<0,2,3> }
}
